#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "html/fragment.h"

namespace krnqb::html {

/// How good or bad a fact is. Every mark has words too: colour alone says nothing.
enum class Mark : std::uint8_t { Plain, Good, Caution, Bad };

/// Returns a name out of the data, which does not change the direction of the text around it. An empty name
/// is nothing.
Fragment Name(std::string_view name);

Fragment Paragraph(const Fragment& content);
Fragment Paragraph(std::string_view text);
/// Returns a paragraph in smaller and paler letters.
Fragment Remark(std::string_view text);

/// Returns a heading of `level` 2 to 6.
Fragment Heading(int level, std::string_view text);

/// Returns a link to the element with an id on the same page.
Fragment LinkTo(std::string_view id, const Fragment& content);

/// Returns a bulleted list.
Fragment List(const std::vector<Fragment>& items);

/// A named fact, such as "Plan: nursery.kpf".
struct Fact {
  std::string name;
  Fragment value;
};
/// Returns a list of facts, each with its name beside it.
Fragment Facts(const std::vector<Fact>& facts);

/// Returns a short word in a frame, such as "done".
Fragment Badge(Mark mark, std::string_view word);
/// Returns a frame that stands out, for the result of a page.
Fragment Box(Mark mark, const Fragment& content);

/// Returns content that is shown when the user opens it, or follows a link to `id`, which may be empty.
Fragment Details(const Fragment& summary, const Fragment& content, std::string_view id = {});

}  // namespace krnqb::html

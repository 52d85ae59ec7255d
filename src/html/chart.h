#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "html/fragment.h"

namespace krnqb::html {

/// The most series that a chart has colours for.
inline constexpr std::size_t seriesColours = 4;

enum class SeriesKind : std::uint8_t {
  Bars,
  Line,
  DashedLine,
};

/// Amounts that belong together, one for each label of the chart; nullopt and amounts that are not finite
/// leave a gap.
struct Series {
  std::string name;
  SeriesKind kind = SeriesKind::Bars;
  std::size_t colour = 0;  ///< 0 to 3
  std::vector<std::optional<double>> amounts;
};

/// A chart over a few labels, such as months.
struct Chart {
  std::string title;        ///< what the chart shows
  std::string description;  ///< where the same figures can be read as a text
  std::vector<std::string> labels;
  std::vector<Series> series;
};

/// Returns a chart as an inline image with an axis, a legend, and bars beside each other for each label.
/// Returns an empty fragment if every amount is missing.
Fragment ChartImage(const Chart& chart);

/// An amount with the name that it belongs to.
struct NamedAmount {
  std::string name;
  double amount = 0;
};

/// Returns a chart with a horizontal bar for each of the amounts, which must be finite, in their order. Long
/// names are shortened. Returns nothing without amounts.
Fragment BarList(const std::string& title, const std::string& description,
                 const std::vector<NamedAmount>& amounts, std::size_t colour);

}  // namespace krnqb::html

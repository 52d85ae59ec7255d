#include "html/chart.h"

#include <fmt/format.h>

#include <algorithm>
#include <cmath>

#include "support/characters.h"
#include "support/money_text.h"

namespace krnqb::html {
namespace {

constexpr double imageWidth = 960;
constexpr double lineHeight = 18;

struct Point {
  double x = 0;
  double y = 0;
};

std::string Number(double value) {
  return fmt::format("{:.1f}", value == 0 ? 0.0 : value);
}

Fragment TextAt(const Point& place, std::string_view anchor, std::string_view text) {
  return Element("text",
                 {{"x", Number(place.x)}, {"y", Number(place.y)}, {"text-anchor", std::string(anchor)}},
                 Text(text));
}

Fragment Rectangle(const Point& corner, const Point& size, std::string_view look) {
  return Element("rect", {{"class", std::string(look)},
                          {"x", Number(corner.x)},
                          {"y", Number(corner.y)},
                          {"width", Number(size.x)},
                          {"height", Number(size.y)}});
}

Fragment Stroke(const Point& from, const Point& to, std::string_view look) {
  return Element("line", {{"class", std::string(look)},
                          {"x1", Number(from.x)},
                          {"y1", Number(from.y)},
                          {"x2", Number(to.x)},
                          {"y2", Number(to.y)}});
}

// Like a table, it scrolls on its own where the page is narrower than its letters need.
Fragment Image(const std::string& title, const std::string& description, double height,
               const Fragment& content) {
  const Fragment image =
      Element("svg", {{"role", "img"}, {"viewBox", fmt::format("0 0 {} {}", imageWidth, height)}},
              Element("title", Text(title)) + Element("desc", Text(description)) + content);
  return Element(
      "div", {{"class", "scroll"}, {"role", "region"}, {"aria-label", "Chart: " + title}, {"tabindex", "0"}},
      image);
}

std::string Look(std::string_view kind, std::size_t colour) {
  return fmt::format("{}{}", kind, colour % seriesColours);
}

// The marks of an axis: multiples of 1, 2 or 5 times a power of ten that enclose all amounts and 0.
class Axis {
 public:
  Axis(double lowest, double highest)
      : step_(StepOf(lowest, highest)),
        first_(std::floor(lowest / step_)),
        last_(std::max(std::ceil(highest / step_), first_ + 1)) {}

  std::vector<double> Marks() const {
    std::vector<double> marks;
    for (double mark = first_; mark <= last_; ++mark) marks.push_back(mark * step_);
    return marks;
  }
  std::string MarkText(double mark) const {
    return MoneyText(mark, step_ < 1 ? MoneyForm::Cents : MoneyForm::WholeUnits);
  }
  /// Returns where an amount is: 0 at the first mark, 1 at the last.
  double PlaceOf(double amount) const { return (amount / step_ - first_) / (last_ - first_); }

 private:
  // The least of 1, 2, 5 and 10 times a power of ten that needs at most five steps.
  static double StepOf(double lowest, double highest) {
    constexpr double wantedSteps = 5;
    const double span = std::max(highest - lowest, 1e-6);
    const double power = std::pow(10.0, std::floor(std::log10(span / wantedSteps)));
    for (const double factor : {1.0, 2.0, 5.0}) {
      if (factor * power * wantedSteps >= span) return factor * power;
    }
    return 10 * power;
  }

  double step_;
  double first_;
  double last_;
};

std::optional<double> AmountAt(const Series& series, std::size_t index) {
  const std::optional<double> found = index < series.amounts.size() ? series.amounts[index] : std::nullopt;
  if (!found) return std::nullopt;
  const double amount = *found;
  // Larger ones would leave no room for the others, or for the marks of the axis.
  constexpr double largest = 1e15;
  return std::isfinite(amount) && std::abs(amount) < largest ? std::optional(amount) : std::nullopt;
}

class ChartDrawing {
 public:
  ChartDrawing(const Chart& chart, const Axis& axis) : chart_(chart), axis_(axis) {
    bars_ = static_cast<std::size_t>(std::ranges::count(chart.series, SeriesKind::Bars, &Series::kind));
  }

  Fragment Whole() const {
    Fragment content = Legend() + Grid() + Labels();
    std::size_t bar = 0;
    for (const Series& series : chart_.series) {
      if (series.kind == SeriesKind::Bars) content += BarsOf(series, bar++);
    }
    content += Stroke({left, Height(0)}, {right, Height(0)}, "zero");
    for (const Series& series : chart_.series) {
      if (series.kind != SeriesKind::Bars) content += LinesOf(series);
    }
    return Image(chart_.title, chart_.description, bottom + 2 * lineHeight, content);
  }

 private:
  static constexpr double left = 90;
  static constexpr double right = imageWidth - 10;
  static constexpr double top = 40;
  static constexpr double bottom = 270;

  double Height(double amount) const { return bottom - axis_.PlaceOf(amount) * (bottom - top); }
  double GroupWidth() const { return (right - left) / static_cast<double>(chart_.labels.size()); }
  double Middle(std::size_t index) const { return left + (static_cast<double>(index) + 0.5) * GroupWidth(); }

  Fragment Legend() const {
    constexpr double keyWidth = 22;
    constexpr double gap = 24;
    constexpr double characterWidth = 7;
    Fragment legend;
    double x = left;
    for (const Series& series : chart_.series) {
      const double middle = 12;
      legend += series.kind == SeriesKind::Bars
                    ? Rectangle({x, middle - 6}, {keyWidth, 12}, Look("f", series.colour))
                    : Stroke({x, middle}, {x + keyWidth, middle}, LineLook(series));
      legend += TextAt({x + keyWidth + 6, middle + 4}, "start", series.name);
      x += keyWidth + 6 + characterWidth * static_cast<double>(CharacterCount(series.name)) + gap;
    }
    return legend;
  }

  Fragment Grid() const {
    Fragment grid;
    for (const double mark : axis_.Marks()) {
      grid += Stroke({left, Height(mark)}, {right, Height(mark)}, "axis");
      grid += TextAt({left - 8, Height(mark) + 4}, "end", axis_.MarkText(mark));
    }
    return grid;
  }

  Fragment Labels() const {
    Fragment labels;
    for (std::size_t index = 0; index < chart_.labels.size(); ++index)
      labels += TextAt({Middle(index), bottom + lineHeight}, "middle", chart_.labels[index]);
    return labels;
  }

  Fragment BarsOf(const Series& series, std::size_t bar) const {
    constexpr double usedPart = 0.78;
    const double width = GroupWidth() * usedPart / static_cast<double>(bars_);
    Fragment drawn;
    for (std::size_t index = 0; index < chart_.labels.size(); ++index) {
      const std::optional<double> amount = AmountAt(series, index);
      if (!amount || *amount == 0) continue;
      const double x = Middle(index) - GroupWidth() * usedPart / 2 + width * static_cast<double>(bar);
      const double upper = std::min(Height(*amount), Height(0));
      const double height = std::abs(Height(*amount) - Height(0));
      drawn += Rectangle({x, upper}, {std::max(width - 1, 1.0), height}, Look("f", series.colour));
    }
    return drawn;
  }

  static std::string LineLook(const Series& series) {
    return Look("s", series.colour) + (series.kind == SeriesKind::DashedLine ? " dashed" : "");
  }

  // A gap ends a line; the next amount begins a new one.
  Fragment LinesOf(const Series& series) const {
    Fragment drawn;
    std::string points;
    for (std::size_t index = 0; index <= chart_.labels.size(); ++index) {
      const std::optional<double> amount =
          index < chart_.labels.size() ? AmountAt(series, index) : std::nullopt;
      if (amount) {
        if (!points.empty()) points += ' ';
        points += Number(Middle(index)) + ',' + Number(Height(*amount));
      } else if (!points.empty()) {
        drawn += Element("polyline", {{"class", LineLook(series)}, {"points", points}});
        points.clear();
      }
    }
    return drawn;
  }

  const Chart& chart_;
  const Axis& axis_;
  std::size_t bars_ = 0;
};

std::string Shortened(const std::string& name, std::size_t most) {
  if (CharacterCount(name) <= most) return name;
  std::string_view rest = name;
  for (std::size_t taken = 0; taken + 1 < most; ++taken) TakeCharacter(rest);
  return name.substr(0, name.size() - rest.size()) + "\u2026";
}

}  // namespace

Fragment ChartImage(const Chart& chart) {
  double lowest = 0;
  double highest = 0;
  bool any = false;
  for (const Series& series : chart.series) {
    for (std::size_t index = 0; index < chart.labels.size(); ++index) {
      const std::optional<double> amount = AmountAt(series, index);
      if (!amount) continue;
      any = true;
      lowest = std::min(lowest, *amount);
      highest = std::max(highest, *amount);
    }
  }
  if (!any) return {};
  const Axis axis(lowest, highest);
  return ChartDrawing(chart, axis).Whole();
}

Fragment BarList(const std::string& title, const std::string& description,
                 const std::vector<NamedAmount>& amounts, std::size_t colour) {
  if (amounts.empty()) return {};
  constexpr std::size_t longestName = 34;
  constexpr double left = 250;
  constexpr double roomForAmount = 110;
  constexpr double rowHeight = 24;
  constexpr double barHeight = 15;
  double lowest = 0;
  double highest = 0;
  for (const NamedAmount& named : amounts) {
    lowest = std::min(lowest, named.amount);
    highest = std::max(highest, named.amount);
  }
  const double span = std::max(highest - lowest, 1e-6);
  const double scale = (imageWidth - left - roomForAmount) / span;
  const double zero = left - lowest * scale;
  Fragment content;
  double y = 4;
  for (const NamedAmount& named : amounts) {
    const double end = zero + named.amount * scale;
    content += TextAt({left - 8, y + barHeight - 3}, "end", Shortened(named.name, longestName));
    content += Rectangle({std::min(zero, end), y}, {std::max(std::abs(end - zero), 1.0), barHeight},
                         Look("f", colour));
    content += TextAt({std::max(zero, end) + 6, y + barHeight - 3}, "start", MoneyText(named.amount));
    y += rowHeight;
  }
  return Image(title, description, y + 4, content);
}

}  // namespace krnqb::html

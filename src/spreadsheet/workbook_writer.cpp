#include "spreadsheet/workbook_writer.h"

#include <fmt/format.h>
#include <xlsxwriter.h>

#include <algorithm>
#include <array>
#include <map>
#include <memory>
#include <string>

#include "krnqb/error.h"
#include "spreadsheet/block_cells.h"

namespace krnqb::spreadsheet {
namespace {

constexpr std::string_view amountFormat = "#,##0.00";

void Check(lxw_error failure, std::string_view step) {
  if (failure == LXW_NO_ERROR) return;
  throw Error(error_number::unspecified, fmt::format("{} failed: {}", step, lxw_strerror(failure)));
}

// Spreadsheets read "_x0041_" in a text as the character with that number, unless its first "_" is written
// that way itself.
std::string Escaped(const std::string& text) {
  constexpr std::size_t length = 7;
  constexpr std::string_view hexadecimal = "0123456789abcdefABCDEF";
  std::string escaped;
  for (std::size_t at = 0; at < text.size(); ++at) {
    const std::string_view candidate = std::string_view(text).substr(at, length);
    const bool numbered = candidate.size() == length && candidate.starts_with("_x") &&
                          candidate.ends_with('_') &&
                          candidate.substr(2, 4).find_first_not_of(hexadecimal) == std::string_view::npos;
    if (numbered) escaped += "_x005F";
    escaped += text[at];
  }
  return escaped;
}

class Formats {
 public:
  explicit Formats(lxw_workbook* workbook) : workbook_(workbook) {}

  lxw_format* Of(CellStyle style) {
    lxw_format*& format = formats_[style];
    if (format == nullptr) format = Make(style);
    return format;
  }

 private:
  lxw_format* Make(CellStyle style) {
    constexpr lxw_color_t headingColor = 0xDCE6F1;
    constexpr lxw_color_t actualColor = 0xE2EFDA;
    constexpr lxw_color_t noteColor = 0x595959;
    constexpr double titleSize = 12;
    lxw_format* format = workbook_add_format(workbook_);
    if (format == nullptr) throw std::bad_alloc();
    switch (style) {
      case CellStyle::Plain:
      case CellStyle::Name:
        break;
      case CellStyle::Title:
        format_set_bold(format);
        format_set_font_size(format, titleSize);
        break;
      case CellStyle::Note:
        format_set_font_color(format, noteColor);
        break;
      case CellStyle::Heading:
      case CellStyle::TextHeading:
      case CellStyle::ActualHeading:
        format_set_bold(format);
        format_set_align(format, style == CellStyle::TextHeading ? LXW_ALIGN_LEFT : LXW_ALIGN_CENTER);
        format_set_bottom(format, LXW_BORDER_THIN);
        format_set_bg_color(format, style == CellStyle::ActualHeading ? actualColor : headingColor);
        break;
      case CellStyle::TotalName:
        format_set_bold(format);
        break;
      case CellStyle::Amount:
      case CellStyle::TotalAmount:
        format_set_num_format(format, amountFormat.data());
        break;
      case CellStyle::Rate:
      case CellStyle::TotalRate:
        format_set_num_format(format, "0.00%");
        break;
      case CellStyle::Number:
        break;
    }
    if (style == CellStyle::TotalAmount || style == CellStyle::TotalRate) {
      format_set_bold(format);
      format_set_top(format, LXW_BORDER_THIN);
    }
    return format;
  }

  lxw_workbook* workbook_;
  std::map<CellStyle, lxw_format*> formats_;
};

// Puts a workbook together in memory; it reaches the file when it is closed.
class Writer {
 public:
  Writer(const Workbook& workbook, const std::string& file, std::string folder)
      : folder_(std::move(folder)), workbook_(Create(file)), formats_(workbook_.get()) {
    lxw_doc_properties properties{};
    std::string title = workbook.title;
    properties.title = title.data();
    properties.created = workbook.created;
    Check(workbook_set_properties(workbook_.get(), &properties), "writing the properties");
    // Charts refer to sheets by name, so all sheets come first.
    for (const Sheet& sheet : workbook.sheets) {
      lxw_worksheet* added = workbook_add_worksheet(workbook_.get(), sheet.name.c_str());
      if (added == nullptr) {
        throw Error(error_number::unspecified, fmt::format("adding the sheet \"{}\" failed", sheet.name));
      }
      sheets_.push_back(added);
    }
    for (std::size_t index = 0; index < sheets_.size(); ++index) Fill(sheets_[index], workbook.sheets[index]);
  }

  void Close() { Check(workbook_close(workbook_.release()), "putting the file together"); }

 private:
  struct Free {
    void operator()(lxw_workbook* workbook) const noexcept { lxw_workbook_free(workbook); }
  };

  lxw_workbook* Create(const std::string& file) {
    lxw_workbook_options options{};
    options.tmpdir = folder_.data();
    lxw_workbook* created = workbook_new_opt(file.c_str(), &options);
    if (created == nullptr) throw std::bad_alloc();
    return created;
  }

  void Fill(lxw_worksheet* target, const Sheet& sheet) {
    for (const SheetCell& cell : sheet.cells) AddCell(target, cell);
    SetColumns(target, sheet);
    lxw_row_col_options hidden{};
    hidden.hidden = LXW_TRUE;
    for (std::uint32_t row = sheet.hiddenRows.first; row < sheet.hiddenRows.second; ++row) {
      Check(worksheet_set_row_opt(target, row, LXW_DEF_ROW_HEIGHT, nullptr, &hidden), "hiding a row");
    }
    if (sheet.frozenRows > 0 || sheet.frozenColumns > 0) {
      worksheet_freeze_panes(target, sheet.frozenRows, sheet.frozenColumns);
    }
    SetUpPages(target, sheet);
    for (const ColumnChart& chart : sheet.charts) AddChart(target, sheet, chart);
    // Formulas of neighbouring months differ, and sums do not include the rate beside them.
    constexpr const char* everywhere = "A1:XFD1048576";
    for (const lxw_ignore_errors kind :
         {LXW_IGNORE_NUMBER_STORED_AS_TEXT, LXW_IGNORE_FORMULA_DIFFERS, LXW_IGNORE_FORMULA_RANGE}) {
      Check(worksheet_ignore_errors(target, static_cast<std::uint8_t>(kind), everywhere), "marking cells");
    }
  }

  void AddCell(lxw_worksheet* target, const SheetCell& cell) {
    lxw_format* format = formats_.Of(cell.style);
    lxw_error failure = LXW_NO_ERROR;
    if (const auto* text = std::get_if<std::string>(&cell.content)) {
      failure = worksheet_write_string(target, cell.row, cell.column, Escaped(*text).c_str(), format);
    } else if (const auto* number = std::get_if<double>(&cell.content)) {
      failure = worksheet_write_number(target, cell.row, cell.column, *number, format);
    } else {
      const auto& formula = std::get<SheetFormula>(cell.content);
      failure = worksheet_write_formula_num(target, cell.row, cell.column, formula.text.c_str(), format,
                                            formula.value);
    }
    Check(failure, "writing a cell");
  }

  static void SetColumns(lxw_worksheet* target, const Sheet& sheet) {
    for (std::size_t column = 0; column < sheet.columnWidths.size(); ++column) {
      const auto place = static_cast<lxw_col_t>(column);
      Check(worksheet_set_column(target, place, place, sheet.columnWidths[column], nullptr),
            "setting a column's width");
    }
  }

  static void SetUpPages(lxw_worksheet* target, const Sheet& sheet) {
    worksheet_set_landscape(target);
    worksheet_set_footer(target, "&L&F, &A&RPage &P of &N");
    if (sheet.frozenRows > 0)
      Check(worksheet_repeat_rows(target, sheet.frozenRows - 1, sheet.frozenRows - 1), "setting up pages");
    if (sheet.pageBreak == 0) {
      worksheet_fit_to_pages(target, 1, 0);
      return;
    }
    // Programs ignore the break on pages that are fitted to a width, so the width is fitted here.
    constexpr double pageWidth = 680;
    constexpr double whole = 100;
    constexpr double least = 10;
    const double widest = std::max(Pixels(sheet, 0, sheet.pageBreak - 1U),
                                   Pixels(sheet, 0, 0) + Pixels(sheet, sheet.pageBreak, mostColumns));
    worksheet_set_print_scale(
        target, static_cast<std::uint16_t>(std::clamp(whole * pageWidth / widest, least, whole)));
    Check(worksheet_repeat_columns(target, 0, 0), "setting up pages");
    std::array<lxw_col_t, 2> breaks{sheet.pageBreak, 0};
    Check(worksheet_set_v_pagebreaks(target, breaks.data()), "setting up pages");
  }

  // The width of some columns, from the first to the last of them that there is.
  static double Pixels(const Sheet& sheet, std::size_t first, std::size_t last) {
    constexpr double pixelsPerCharacter = 7;
    constexpr double padding = 5;
    double width = 0;
    for (std::size_t column = first; column <= last && column < sheet.columnWidths.size(); ++column) {
      width += sheet.columnWidths[column] * pixelsPerCharacter + padding;
    }
    return width;
  }

  void AddChart(lxw_worksheet* target, const Sheet& sheet, const ColumnChart& chart) {
    constexpr double defaultWidth = 480;
    constexpr double gap = 12;
    lxw_chart* added = workbook_add_chart(workbook_.get(), LXW_CHART_COLUMN);
    if (added == nullptr) throw std::bad_alloc();
    for (const ChartSeries& data : chart.series) {
      lxw_chart_series* series = chart_add_series(added, nullptr, nullptr);
      SetRange(series, sheet, chart.categories, chart_series_set_categories);
      SetRange(series, sheet, data.values, chart_series_set_values);
      chart_series_set_name(series, data.name.c_str());
      lxw_chart_fill fill{};
      fill.color = data.color;
      chart_series_set_fill(series, &fill);
    }
    lxw_chart_font titleFont{};
    titleFont.size = 12;
    titleFont.bold = LXW_TRUE;
    chart_title_set_name(added, chart.title.c_str());
    chart_title_set_name_font(added, &titleFont);
    chart_legend_set_position(added, LXW_CHART_LEGEND_BOTTOM);
    chart_axis_set_num_format(added->y_axis, "#,##0");
    constexpr lxw_color_t gridColor = 0xD9D9D9;
    lxw_chart_line grid{};
    grid.color = gridColor;
    chart_axis_major_gridlines_set_line(added->y_axis, &grid);
    // Below the columns of a loss, not across them.
    chart_axis_set_label_position(added->x_axis, LXW_CHART_AXIS_LABEL_POSITION_LOW);
    const double width = Pixels(sheet, chart.column, chart.lastColumn);
    lxw_chart_options options{};
    options.x_scale = std::max(1.0, width - gap) / defaultWidth;
    options.y_scale = 1;
    std::string description = chart.title + " per month";
    options.description = description.data();
    Check(worksheet_insert_chart_opt(target, chart.row, chart.column, added, &options), "adding a chart");
  }

  template <typename Setter>
  static void SetRange(lxw_chart_series* series, const Sheet& sheet, const CellRange& range, Setter set) {
    set(series, sheet.name.c_str(), range.row, range.first, range.row, range.last);
  }

  std::string folder_;  // must outlive the workbook
  std::unique_ptr<lxw_workbook, Free> workbook_;
  Formats formats_;
  std::vector<lxw_worksheet*> sheets_;
};

}  // namespace

void PutTogether(const Workbook& workbook, const std::string& file, const std::string& folder) {
  Writer writer(workbook, file, folder);
  writer.Close();
}

}  // namespace krnqb::spreadsheet

#include "cli/CommandReview.h"

#include <algorithm>
#include <array>
#include <ostream>
#include <string>
#include <utility>
#include <vector>

#include "base/Text.h"

namespace tolvan {
namespace {

constexpr std::array<std::string_view, 3> titles{"Renglones que no se procesarán", "Items que se actualizarán",
                                                 "Nuevos Items que se crearán"};
constexpr std::array<RowAction, 3> groups{RowAction::Create, RowAction::Update, RowAction::None};

constexpr std::array<std::string_view, 9> headings{"Fila",  "Excel", "Tolvan", "Libre", "Descripción",
                                                   "Costo", "PVP",   "Dif",    "Acción"};
enum Column : std::size_t { Row, Code, Item, Free, Description, Cost, Price, Difference, Action };

constexpr std::size_t widest = 40;
constexpr std::size_t narrowestDescription = 16;
constexpr std::size_t indent = 6;
constexpr std::size_t mostRowsOnTerminal = 50;

using Cells = std::array<std::string, headings.size()>;

bool IsNumber(std::size_t column) {
  return column == Row || (column >= Cost && column <= Difference);
}

/// On one line, and without what a terminal would take for a command.
std::string Printable(std::string_view text) {
  std::string printable;
  for (std::size_t position = 0; position < text.size();) {
    const char32_t character = NextCodePoint(text, position);
    const bool isControl = character < 0x20 || (character >= 0x7F && character < 0xA0);
    AppendCodePoint(printable, isControl ? U' ' : character);
  }
  return printable;
}

Cells CellsOf(const PriceImporter& importer, std::int32_t row) {
  Cells cells;
  cells[Row] = std::to_string(importer.RowAt(row).sheetRow);
  const ReviewLine line = importer.LineOf(row);
  for (std::size_t index = 0; index < line.size(); ++index) cells[index + 1] = Printable(TrimBlanks(line[index]));
  return cells;
}

std::string Padded(const std::string& text, std::size_t width, bool toTheRight) {
  const std::string blanks(width - std::min(width, CountColumns(text)), ' ');
  return toTheRight ? blanks + text : text + blanks;
}

/// The table of one group.
class Table {
 public:
  Table(std::ostream& out, std::optional<std::size_t> terminal) : out_(out), terminal_(terminal) {}

  /// Makes room for a row that will be printed.
  void Measure(const Cells& cells) {
    for (std::size_t column = 0; column < cells.size(); ++column) {
      widths_[column] = std::max(widths_[column], std::min(widest, CountColumns(cells[column])));
    }
  }

  void PrintHeading() {
    for (std::size_t column = 0; column < headings.size(); ++column) {
      const bool isUsed = widths_[column] > 0 || !terminal_;
      if (isUsed) widths_[column] = std::max(widths_[column], CountColumns(headings[column]));
    }
    if (terminal_) Fit();
    Cells cells;
    for (std::size_t column = 0; column < headings.size(); ++column) cells[column] = headings[column];
    PrintLine(cells, {});
  }

  /// The remarks follow the action, or go below it where there is no room.
  void Print(Cells cells, const std::string& remarks) {
    if (!terminal_) return PrintLine(cells, remarks);
    const std::string below = Below(cells);
    const bool fits = widths_[Action] > 0 && Width() + 2 + CountColumns(remarks) <= *terminal_;
    std::string beside = fits ? remarks : std::string();
    const std::size_t width = std::max<std::size_t>(widths_[Description], 1);
    for (const std::string& part : WrapAtWords(widths_[Description] > 0 ? cells[Description] : "", width)) {
      cells[Description] = part;
      PrintLine(cells, std::exchange(beside, {}));
      cells = {};
    }
    PrintBelow(below);
    if (!fits) PrintBelow(remarks);
  }

 private:
  std::size_t Width() const {
    std::size_t width = 0;
    for (const std::size_t column : widths_) width += column == 0 ? 0 : column + 2;
    return width;
  }

  bool IsTooWide() const { return Width() > *terminal_; }

  /// What the group's title says already goes first; then the description gets narrow; then what explains a row stands
  /// below it.
  void Fit() {
    if (IsTooWide()) widths_[Action] = 0;
    if (IsTooWide()) {
      const std::size_t others = Width() - widths_[Description];
      const std::size_t left = *terminal_ - std::min(*terminal_, others);
      widths_[Description] = std::min(widths_[Description], std::max(left, narrowestDescription));
    }
    for (const std::size_t column : {Description, Free, Item}) {
      if (widths_[column] == 0 || !IsTooWide()) continue;
      widths_[column] = 0;
      below_.push_back(column);
    }
  }

  void PrintLine(const Cells& cells, const std::string& remarks) {
    std::string line;
    for (std::size_t column = 0; column < cells.size(); ++column) {
      const std::size_t width = widths_[column];
      if (width > 0) line += "  " + Padded(CutToColumns(cells[column], width), width, IsNumber(column));
    }
    line.erase(line.find_last_not_of(' ') + 1);
    out_ << line << (remarks.empty() ? "" : ": ") << remarks << '\n';
  }

  std::string Below(const Cells& cells) const {
    std::string text;
    for (const std::size_t column : below_) {
      if (cells[column].empty()) continue;
      if (!text.empty()) text += ", ";
      if (column != Description) text += std::string(headings.at(column)) + ": ";
      text += cells[column];
    }
    return text;
  }

  void PrintBelow(const std::string& text) {
    if (text.empty()) return;
    for (const std::string& line : WrapAtWords(text, *terminal_ - std::min(*terminal_ - 1, indent))) {
      out_ << std::string(indent, ' ') << line << '\n';
    }
  }

  std::ostream& out_;
  std::optional<std::size_t> terminal_;
  std::array<std::size_t, headings.size()> widths_{};  // 0: not in the line
  std::vector<std::size_t> below_;
};

/// 49636 as "49,636".
std::string Grouped(std::size_t count) {
  std::string text = std::to_string(count);
  for (std::size_t place = text.size(); place > 3;) text.insert(place -= 3, ",");
  return text;
}

using Rows = std::array<std::vector<std::int32_t>, groups.size()>;

/// How many rows of each group a terminal shows: all of a small one, and of the others as many each.
std::array<std::size_t, groups.size()> Shares(const Rows& rows) {
  std::array<std::size_t, groups.size()> bySize{0, 1, 2};
  std::ranges::sort(bySize, {}, [&](std::size_t group) { return rows.at(group).size(); });
  std::array<std::size_t, groups.size()> shares{};
  std::size_t left = mostRowsOnTerminal;
  for (std::size_t index = 0; index < bySize.size(); ++index) {
    const std::size_t group = bySize.at(index);
    shares.at(group) = std::min(rows.at(group).size(), left / (bySize.size() - index));
    left -= shares.at(group);
  }
  return shares;
}

void PrintGroup(std::ostream& out, const PriceImporter& importer, const std::vector<std::int32_t>& rows,
                std::size_t shown, std::optional<std::size_t> columns) {
  Table table(out, columns);
  for (std::size_t index = 0; index < shown; ++index) table.Measure(CellsOf(importer, rows[index]));
  table.PrintHeading();
  for (std::size_t index = 0; index < shown; ++index) {
    table.Print(CellsOf(importer, rows[index]), Printable(importer.RowAt(rows[index]).AllRemarks()));
  }
  if (shown < rows.size()) out << "  … y " << Grouped(rows.size() - shown) << " más; --informe los escribe\n";
  out << '\n';
}

}  // namespace

void PrintReview(std::ostream& out, const PriceImporter& importer, std::optional<std::size_t> columns) {
  Rows rows;
  for (std::int32_t row = 1; row <= importer.NumeroRenglones(); ++row) {
    rows.at(static_cast<std::size_t>(importer.RowAt(row).action)).push_back(row);
  }
  const auto shares = Shares(rows);
  for (const RowAction action : groups) {
    const auto group = static_cast<std::size_t>(action);
    const std::size_t count = rows.at(group).size();
    if (count == 0) continue;
    out << titles.at(group) << " (" << count << ")\n";
    PrintGroup(out, importer, rows.at(group), columns ? shares.at(group) : count, columns);
  }
}

}  // namespace tolvan

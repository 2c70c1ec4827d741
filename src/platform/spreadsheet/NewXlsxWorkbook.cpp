#include "platform/spreadsheet/NewXlsxWorkbook.h"

#include <unistd.h>
#include <xlsxwriter.h>

#include <algorithm>
#include <cerrno>
#include <chrono>
#include <clocale>
#include <cmath>
#include <cstdlib>
#include <vector>

#include "base/Text.h"
#include "platform/spreadsheet/DesktopOpener.h"
#include "platform/spreadsheet/EscapedText.h"
#include "platform/spreadsheet/WorkbookLimits.h"
#include "platform/spreadsheet/XlsxReader.h"

namespace tolvan {
namespace {

constexpr std::size_t maximumTextCharacters = 32'767;
constexpr double widestColumn = 60;
constexpr double narrowestColumn = 9;
constexpr std::size_t headingCharacters = 16;
constexpr double explanationHeight = 90;  // points: six lines
constexpr std::string_view extension = ".xlsx";
constexpr std::size_t copyBytes = std::size_t{64} << 10;

/// The library writes numbers as the thread's locale does, and a decimal comma would make the file unreadable.
class PlainLocale {
 public:
  PlainLocale() : plain_(newlocale(LC_ALL_MASK, "C", nullptr)), before_(uselocale(plain_)) {}
  ~PlainLocale() {
    uselocale(before_);
    freelocale(plain_);
  }
  PlainLocale(const PlainLocale&) = delete;
  PlainLocale& operator=(const PlainLocale&) = delete;

 private:
  locale_t plain_;
  locale_t before_;
};

class NeverInterrupted : public Interruption {
 public:
  bool Requested() const noexcept override { return false; }
};

std::string TemporaryFolder() {
  const char* folder = std::getenv("TMPDIR");
  return folder != nullptr && folder[0] == '/' ? folder : "/tmp";
}

std::string MakeTemporaryFile(const std::string& folder) {
  std::string path = folder + "/tolvan-libro-XXXXXX";
  const int descriptor = mkstemp(path.data());
  if (descriptor < 0) throw HostError(HostErrorKind::Access, "no se puede crear un archivo temporal", path, errno);
  close(descriptor);
  return path;
}

[[noreturn]] void Fail(lxw_error code, int systemCode) {
  const bool isFull = systemCode == ENOSPC || systemCode == EDQUOT;
  throw HostError(isFull ? HostErrorKind::Full : HostErrorKind::Failed, lxw_strerror(code), {}, code);
}

time_t MidnightOf(Date day) {
  using namespace std::chrono;
  return system_clock::to_time_t(sys_days(year(day.Year()) / day.Month() / day.Day()));
}

/// As the library and the format need it: valid UTF-8 without NUL.
std::string CleanText(std::string_view text) {
  std::string clean;
  for (std::size_t at = 0; at < text.size();) {
    const char32_t codePoint = NextCodePoint(text, at);
    if (codePoint == 0) continue;
    // A single byte that begins no character stands in the range of lone surrogates, which becomes U+FFFD.
    AppendCodePoint(clean, codePoint);
  }
  return clean;
}

}  // namespace

struct NewXlsxWorkbook::Book {
  std::string folder = TemporaryFolder();
  std::string path = MakeTemporaryFile(folder);
  lxw_workbook* workbook = nullptr;
  lxw_worksheet* sheet = nullptr;
  lxw_format* title = nullptr;
  lxw_format* note = nullptr;
  lxw_format* heading = nullptr;
  lxw_format* explanation = nullptr;
  lxw_format* text = nullptr;
  std::vector<double> widths;  // in characters

  Book() = default;
  ~Book() {
    if (workbook != nullptr) lxw_workbook_free(workbook);
    unlink(path.c_str());
  }
  Book(const Book&) = delete;
  Book& operator=(const Book&) = delete;

  void Begin(Date created);
  void MakeFormats();
  lxw_format* HeadingFormat(std::uint32_t row, std::uint32_t headingRows) const;
  void Widen(std::uint32_t column, std::size_t characters);
  void Close();
};

void NewXlsxWorkbook::Book::Begin(Date created) {
  lxw_workbook_options options{};
  options.tmpdir = folder.data();
  workbook = workbook_new_opt(path.c_str(), &options);
  sheet = workbook == nullptr ? nullptr : workbook_add_worksheet(workbook, "Precios");
  if (sheet == nullptr) Fail(LXW_ERROR_MEMORY_MALLOC_FAILED, 0);
  lxw_doc_properties properties{};
  properties.created = MidnightOf(created);
  workbook_set_properties(workbook, &properties);
  worksheet_set_landscape(sheet);
  worksheet_fit_to_pages(sheet, 1, 0);
  MakeFormats();
}

void NewXlsxWorkbook::Book::MakeFormats() {
  title = workbook_add_format(workbook);
  format_set_bold(title);
  format_set_font_size(title, 14);
  note = workbook_add_format(workbook);
  format_set_italic(note);
  heading = workbook_add_format(workbook);
  format_set_bold(heading);
  format_set_bg_color(heading, 0x1F4E78);
  format_set_font_color(heading, LXW_COLOR_WHITE);
  format_set_border(heading, LXW_BORDER_THIN);
  explanation = workbook_add_format(workbook);
  format_set_text_wrap(explanation);
  format_set_align(explanation, LXW_ALIGN_VERTICAL_TOP);
  format_set_bg_color(explanation, 0xDDEBF7);
  format_set_border(explanation, LXW_BORDER_THIN);
  // So that "00123" stays what it is when the user edits it.
  text = workbook_add_format(workbook);
  format_set_num_format(text, "@");
}

/// From below: explanations, names of the columns, notes, and the title in the first row.
lxw_format* NewXlsxWorkbook::Book::HeadingFormat(std::uint32_t row, std::uint32_t headingRows) const {
  if (row == headingRows && headingRows > 1) return explanation;
  if (row + 1 >= headingRows) return heading;
  return row == 1 ? title : note;
}

void NewXlsxWorkbook::Book::Widen(std::uint32_t column, std::size_t characters) {
  if (column >= widths.size()) widths.resize(column + 1, narrowestColumn);
  widths[column] = std::max(widths[column], std::min(widestColumn, static_cast<double>(characters) + 2));
}

void NewXlsxWorkbook::Book::Close() {
  for (std::size_t i = 0; i < widths.size(); ++i) {
    const auto column = static_cast<lxw_col_t>(i);
    worksheet_set_column(sheet, column, column, widths[i], nullptr);
  }
  errno = 0;
  const lxw_error code = workbook_close(workbook);  // frees the workbook, whatever happens
  const int systemCode = errno;
  workbook = nullptr;
  if (code != LXW_NO_ERROR) Fail(code, systemCode);
}

NewXlsxWorkbook::NewXlsxWorkbook(FileHelper& files, Options options)
    : files_(files), options_(std::move(options)), book_(std::make_unique<Book>()), nextRow_(options_.headingRows) {
  book_->Begin(options_.created);
  if (options_.headingRows > 0) worksheet_freeze_panes(book_->sheet, options_.headingRows, 0);
}

NewXlsxWorkbook::~NewXlsxWorkbook() = default;

void NewXlsxWorkbook::WriteHeading(const SheetRow& row) {
  const PlainLocale plain;
  lxw_format* format = book_->HeadingFormat(row.number, options_.headingRows);
  for (const SheetCell& cell : row.cells) {
    const std::string text = cell.AsText();
    WriteCell(row.number - 1, cell.column - 1, std::string_view(text), format, format);
    if (format == book_->heading) book_->Widen(cell.column - 1, std::max(headingCharacters, CountCharacters(text)));
  }
  // The programs do not all fit a row to its wrapped text by themselves.
  if (format == book_->explanation) worksheet_set_row(book_->sheet, row.number - 1, explanationHeight, nullptr);
}

void NewXlsxWorkbook::AppendRow(std::span<const NewCell> cells, NewRowStyle style) {
  if (nextRow_ >= limits::maximumRows) throw HostError(HostErrorKind::InvalidValue, "la hoja no admite más filas");
  const PlainLocale plain;
  const bool isHeading = style == NewRowStyle::Heading;
  std::uint32_t column = 0;
  for (const NewCell& cell : cells) {
    WriteCell(nextRow_, column, cell, isHeading ? book_->heading : book_->text, isHeading ? book_->heading : nullptr);
    if (const auto* text = std::get_if<std::string_view>(&cell)) book_->Widen(column, CountCharacters(*text));
    ++column;
  }
  ++nextRow_;
  if (isHeading && nextRow_ == 1) worksheet_freeze_panes(book_->sheet, 1, 0);
}

void NewXlsxWorkbook::WriteCell(std::uint32_t row, std::uint32_t column, const NewCell& cell, void* textFormat,
                                void* numberFormat) {
  if (column >= limits::maximumColumns) throw HostError(HostErrorKind::InvalidValue, "la hoja no admite más columnas");
  const auto place = static_cast<lxw_col_t>(column);
  lxw_error code = LXW_NO_ERROR;
  if (const auto* text = std::get_if<std::string_view>(&cell)) {
    if (text->empty()) return;
    const std::string clean = CleanText(*text);
    if (CountCharacters(clean) > maximumTextCharacters)
      throw HostError(HostErrorKind::InvalidValue, "el texto es más largo que lo que admite una celda");
    code = worksheet_write_string(book_->sheet, row, place, GuardEscapes(clean).c_str(),
                                  static_cast<lxw_format*>(textFormat));
  } else if (const auto* number = std::get_if<double>(&cell)) {
    if (!std::isfinite(*number)) throw HostError(HostErrorKind::InvalidValue, "el número no se puede escribir");
    code = worksheet_write_number(book_->sheet, row, place, *number, static_cast<lxw_format*>(numberFormat));
  } else {
    return;
  }
  if (code != LXW_NO_ERROR) Fail(code, 0);
  ++cellsWritten_;
}

void NewXlsxWorkbook::Finish() {
  if (book_->workbook == nullptr) return;
  const PlainLocale plain;
  book_->Close();
  Verify();
}

void NewXlsxWorkbook::Verify() const {
  std::uint64_t cells = 0;
  try {
    const NeverInterrupted always;
    XlsxReader reader(std::make_unique<WorkbookFile>(book_->path), always);
    for (SheetRow row; reader.NextRow(row);) cells += row.cells.size();
  } catch (const HostError& error) {
    if (error.Kind() != HostErrorKind::Damaged) throw;
    cells = cellsWritten_ + 1;
  }
  if (cells != cellsWritten_)
    throw HostError(HostErrorKind::Full, "el libro no se pudo escribir completo", book_->folder);
}

void NewXlsxWorkbook::SaveAs(std::string_view path) {
  if (path.size() < extension.size() || !EqualIgnoringCase(path.substr(path.size() - extension.size()), extension))
    throw HostError(HostErrorKind::InvalidValue, "el nombre de un libro nuevo debe terminar en .xlsx",
                    std::string(path));
  Finish();
  const auto target = files_.CreateWhole(path);
  const WorkbookFile written(book_->path);
  std::vector<char> buffer(copyBytes);
  for (std::uint64_t at = 0; at < written.Size();) {
    const std::size_t count = written.ReadAt(at, buffer);
    target->Write({buffer.data(), count});
    at += count;
  }
  target->Commit();
}

std::string NewXlsxWorkbook::OpenForUser() {
  files_.MakeFolder(options_.openFolder);
  std::string path;
  for (int number = 1; path.empty() || files_.FileExists(path); ++number)
    path = files_.Join(options_.openFolder, options_.openName + "-" + std::to_string(number) + std::string(extension));
  SaveAs(path);
  OpenWithDesktop(path);
  return path;
}

}  // namespace tolvan

#include "spreadsheet/LocalSpreadsheetApplication.h"

#include <algorithm>
#include <array>
#include <string>
#include <string_view>

#include "base/Text.h"
#include "spreadsheet/NewXlsxWorkbook.h"
#include "spreadsheet/WorkbookFile.h"
#include "spreadsheet/WorkbookLimits.h"

namespace tolvan {
namespace {

using namespace std::string_view_literals;

constexpr std::size_t lookedAt = 1024;

std::string Beginning(const WorkbookFile& file) {
  std::string bytes(lookedAt, '\0');
  bytes.resize(file.ReadAt(0, bytes));
  return bytes;
}

bool LooksLikeText(std::string_view bytes) {
  return std::all_of(bytes.begin(), bytes.end(), [](char c) {
    return static_cast<unsigned char>(c) >= 0x20 || c == '\t' || c == '\r' || c == '\n' || c == '\f';
  });
}

std::string_view WithoutMark(std::string_view text) {
  if (text.starts_with("\xEF\xBB\xBF"sv)) text.remove_prefix(3);
  const std::size_t first = text.find_first_not_of(" \t\r\n"sv);
  return first == std::string_view::npos ? std::string_view() : text.substr(first);
}

/// A book of the versions 2 to 5 without a container: the record that begins it, and its length.
bool IsBareBiff(std::string_view bytes) {
  constexpr std::array starts{"\x09\x00\x04\x00"sv, "\x09\x02\x06\x00"sv, "\x09\x04\x06\x00"sv, "\x09\x08"sv};
  return std::any_of(starts.begin(), starts.end(), [&](std::string_view start) { return bytes.starts_with(start); });
}

/// What a file is by its first bytes, whatever its name says.
enum class WorkbookKind { Zip, Compound, Other };

WorkbookKind KindOf(const WorkbookFile& file) {
  const std::string bytes = Beginning(file);
  if (bytes.starts_with("PK\3\4"sv) || bytes.starts_with("PK\5\6"sv)) return WorkbookKind::Zip;
  if (bytes.starts_with("\xD0\xCF\x11\xE0\xA1\xB1\x1A\xE1"sv)) return WorkbookKind::Compound;
  return WorkbookKind::Other;
}

/// For Other: what the file seems to be, as the cause of a failure.
std::string DescribeOther(const WorkbookFile& file) {
  const std::string bytes = Beginning(file);
  if (IsBareBiff(bytes))
    return "el libro es de una versión de Excel anterior a la 97; guárdelo de nuevo como .xls o .xlsx";
  if (bytes.starts_with("%PDF-"sv)) return "es un documento PDF, no un libro de Excel";
  const bool isText = LooksLikeText(bytes) || bytes.starts_with("\xFF\xFE"sv) || bytes.starts_with("\xFE\xFF"sv);
  if (!isText) return "no es un libro de Excel";
  const std::string_view text = WithoutMark(bytes);
  if (ContainsIgnoringCase(text, "<html"sv) || ContainsIgnoringCase(text, "<table"sv))
    return "es una página HTML con nombre de libro; ábrala en Excel y guárdela como .xlsx";
  if (text.starts_with('<')) return "es un documento XML, no un libro de Excel";
  return "es un archivo de texto con nombre de libro; ábralo en Excel y guárdelo como .xlsx";
}

std::unique_ptr<WorksheetReader> OpenByContent(const std::string& path, const Interruption& interruption) {
  auto file = std::make_unique<WorkbookFile>(path);
  switch (KindOf(*file)) {
    case WorkbookKind::Zip:
      return ReadXlsx(std::move(file), interruption);
    case WorkbookKind::Compound:
      return ReadXls(std::move(file), interruption);
    case WorkbookKind::Other:
      break;
  }
  FailDamaged(DescribeOther(*file));
}

class NamedReader : public WorksheetReader {
 public:
  NamedReader(std::string path, const Interruption& interruption)
      : path_(std::move(path)), interruption_(interruption), reader_(OpenByContent(path_, interruption)) {}

  bool NextRow(SheetRow& row) override {
    return WithPath(path_, [&] {
      if (interruption_.Requested()) throw HostError(HostErrorKind::Interrupted, "");
      return reader_->NextRow(row);
    });
  }

 private:
  std::string path_;
  const Interruption& interruption_;
  std::unique_ptr<WorksheetReader> reader_;
};

/// The name of a file without folder and extension; "Libro" when there is none.
std::string BaseName(std::string_view path) {
  const std::string_view name = path.substr(path.rfind('/') + 1);
  const std::string_view base = name.substr(0, name.rfind('.'));
  return base.empty() ? "Libro" : std::string(base);
}

class NeverInterrupted : public Interruption {
 public:
  bool Requested() const noexcept override { return false; }
};

}  // namespace

std::unique_ptr<WorksheetReader> LocalSpreadsheetApplication::OpenFirstWorksheet(std::string_view path,
                                                                                 const Interruption& interruption) {
  const std::string name(path);
  return WithPath(name, [&] { return std::make_unique<NamedReader>(name, interruption); });
}

std::unique_ptr<NewWorkbook> LocalSpreadsheetApplication::CreateFromTemplate(std::string_view templatePath,
                                                                             std::uint32_t headingRows) {
  auto workbook = std::make_unique<NewXlsxWorkbook>(
      files_, NewXlsxWorkbook::Options{.created = clock_.Today(),
                                       .openFolder = newWorkbookFolder_,
                                       .openName = BaseName(templatePath),
                                       .headingRows = templatePath.empty() ? 0 : headingRows});
  if (templatePath.empty()) return workbook;
  const NeverInterrupted always;
  const auto reader = OpenFirstWorksheet(templatePath, always);
  for (SheetRow row; reader->NextRow(row) && row.number <= headingRows;) workbook->WriteHeading(row);
  return workbook;
}

}  // namespace tolvan

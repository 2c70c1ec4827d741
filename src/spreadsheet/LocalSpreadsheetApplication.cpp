#include "spreadsheet/LocalSpreadsheetApplication.h"

#include "spreadsheet/NewXlsxWorkbook.h"
#include "spreadsheet/WorkbookFailure.h"
#include "spreadsheet/WorkbookKind.h"
#include "spreadsheet/XlsReader.h"
#include "spreadsheet/XlsxReader.h"

namespace tolvan {
namespace {

std::unique_ptr<WorksheetReader> OpenByContent(const std::string& path, const Interruption& interruption) {
  auto file = std::make_unique<WorkbookFile>(path);
  switch (KindOf(*file)) {
    case WorkbookKind::Zip:
      return std::make_unique<XlsxReader>(std::move(file), interruption);
    case WorkbookKind::Compound:
      return std::make_unique<XlsReader>(std::move(file), interruption);
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

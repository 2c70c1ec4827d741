#include "spreadsheet/XlsxReader.h"

#include "spreadsheet/WorkbookLimits.h"

namespace tolvan {
namespace {

constexpr std::size_t pieceBytes = std::size_t{64} << 10;

}  // namespace

XlsxReader::XlsxReader(std::unique_ptr<WorkbookFile> file, const Interruption& interruption)
    : interruption_(interruption), file_(std::move(file)), package_(*file_), buffer_(pieceBytes) {
  const XlsxWorkbook workbook = ReadWorkbookPart(package_, interruption);
  // A part that is referred to and missing holds nothing; cells that need it are refused where they are met.
  if (!workbook.stringsPart.empty() && package_.Has(workbook.stringsPart)) {
    SharedStringsHandler handler(strings_);
    ReadPart(package_, workbook.stringsPart, limits::maximumPartBytes, handler, interruption);
  }
  if (!workbook.stylesPart.empty() && package_.Has(workbook.stylesPart)) {
    StylesHandler handler(formats_);
    ReadPart(package_, workbook.stylesPart, limits::maximumSmallPartBytes, handler, interruption);
  }
  handler_ = std::make_unique<XlsxSheetHandler>(rows_, strings_, formats_, workbook.from1904);
  part_ = package_.Open(workbook.sheetPart, limits::maximumPartBytes);
  xml_ = std::make_unique<XmlStream>(*handler_, workbook.sheetPart);
}

bool XlsxReader::NextRow(SheetRow& row) {
  while (!rows_.Take(row, strings_)) {
    if (ended_) return false;
    ParsePiece();
  }
  return true;
}

void XlsxReader::ParsePiece() {
  if (interruption_.Requested()) throw HostError(HostErrorKind::Interrupted, "");
  const std::size_t count = part_->Read(buffer_);
  if (count > 0) {
    xml_->Feed({buffer_.data(), count});
    return;
  }
  xml_->Finish();
  ended_ = true;
}

}  // namespace tolvan

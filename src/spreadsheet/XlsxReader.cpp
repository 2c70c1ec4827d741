// Reads the first worksheet of an .xlsx piece by piece.
#include <memory>
#include <vector>

#include "host/SpreadsheetApplication.h"
#include "spreadsheet/WorkbookFile.h"
#include "spreadsheet/WorkbookLimits.h"
#include "spreadsheet/XlsxParts.h"
#include "spreadsheet/XlsxSheetHandler.h"

namespace tolvan {
namespace {

class XlsxReader : public WorksheetReader {
 public:
  XlsxReader(std::unique_ptr<WorkbookFile> file, const Interruption& interruption)
      : interruption_(interruption), file_(std::move(file)), package_(*file_), buffer_(pieceBytes) {
    ReadXlsxWorkbook(package_, workbook_, interruption);
    handler_ = std::make_unique<XlsxSheetHandler>(rows_, workbook_);
    part_ = package_.Open(workbook_.sheetPart, limits::maximumPartBytes);
    xml_ = std::make_unique<XmlStream>(*handler_, workbook_.sheetPart);
  }

  bool NextRow(SheetRow& row) override {
    while (!rows_.Take(row, workbook_.strings)) {
      if (ended_) return false;
      ParsePiece();
    }
    return true;
  }

 private:
  void ParsePiece() {
    if (interruption_.Requested()) throw HostError(HostErrorKind::Interrupted, "");
    const std::size_t count = part_->Read(buffer_);
    if (count > 0) {
      xml_->Feed({buffer_.data(), count});
      return;
    }
    xml_->Finish();
    ended_ = true;
  }

  const Interruption& interruption_;
  std::unique_ptr<WorkbookFile> file_;
  ZipPackage package_;
  XlsxWorkbook workbook_;
  RowBlock rows_;
  std::unique_ptr<XlsxSheetHandler> handler_;
  std::unique_ptr<ZipPart> part_;
  std::unique_ptr<XmlStream> xml_;
  std::vector<char> buffer_;
  bool ended_ = false;
};

}  // namespace

std::unique_ptr<WorksheetReader> ReadXlsx(std::unique_ptr<WorkbookFile> file, const Interruption& interruption) {
  return std::make_unique<XlsxReader>(std::move(file), interruption);
}

}  // namespace tolvan

// Reads the first worksheet of an .xlsx. Only the shared strings and a piece of the sheet are in memory.
#pragma once

#include <memory>
#include <vector>

#include "host/SpreadsheetApplication.h"
#include "spreadsheet/WorkbookFile.h"
#include "spreadsheet/XlsxParts.h"
#include "spreadsheet/XlsxSheetHandler.h"

namespace tolvan {

class XlsxReader : public WorksheetReader {
 public:
  XlsxReader(std::unique_ptr<WorkbookFile> file, const Interruption& interruption);
  bool NextRow(SheetRow& row) override;

 private:
  void ParsePiece();

  const Interruption& interruption_;
  std::unique_ptr<WorkbookFile> file_;
  ZipPackage package_;
  SharedStrings strings_;
  CellFormats formats_;
  RowBlock rows_;
  std::unique_ptr<XlsxSheetHandler> handler_;
  std::unique_ptr<ZipPart> part_;
  std::unique_ptr<XmlStream> xml_;
  std::vector<char> buffer_;
  bool ended_ = false;
};

}  // namespace tolvan

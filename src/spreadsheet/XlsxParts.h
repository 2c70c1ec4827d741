// The parts of an .xlsx. Relationships lead from the package to the workbook and from there to its sheets, shared
// strings and styles, wherever they lie; all but the sheets are read here.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

#include "spreadsheet/WorkbookTables.h"
#include "spreadsheet/ZipPackage.h"

namespace tolvan {

/// How much of a part is inflated and parsed at a time.
inline constexpr std::size_t pieceBytes = std::size_t{64} << 10;

class Interruption;

/// What stands outside the sheets.
struct XlsxWorkbook {
  SharedStrings strings;
  CellFormats formats;
  bool from1904 = false;
  std::string sheetPart;  ///< the name of the first worksheet's part in tab order
};

/// Throws HostError Damaged when the package holds no workbook or that has no worksheet, Interrupted.
void ReadXlsxWorkbook(const ZipPackage& package, XlsxWorkbook& workbook, const Interruption& interruption);

/// Collects the text of one string item: its plain text or the text of its runs, without phonetic text. Shared by the
/// table of strings and the strings that stand inside cells.
class StringItem {
 public:
  void Clear();

  /// To be called for every element inside the item.
  void StartElement(std::string_view name);
  void EndElement();
  void Text(std::string_view piece);

  /// Every element begun in the item has ended.
  bool AtEnd() const { return depth_ == 0; }

  /// The text, with escapes decoded, once the item is complete.
  std::string_view Decoded();

 private:
  std::string text_;
  unsigned depth_ = 0;
  unsigned phoneticDepth_ = 0;  // depth at which phonetic text began; 0 outside it
  unsigned textDepth_ = 0;      // depth of the <t> element being read; 0 outside one
};

/// Replaces the escapes of text in an .xlsx (ST_Xstring of ECMA-376), once from left to right: "_x000D_" stands for the
/// UTF-16 unit 000D, "_x005F_" for an underscore that would otherwise begin such an escape. Two units that form a pair
/// become one character, a lone half of a pair U+FFFD, and a NUL, which no column of the store can hold, is left out.
void DecodeEscapedText(std::string& text);

/// The text with what looks like an escape, and is none, guarded so that it reads back unchanged. Characters that XML
/// does not hold are not looked at.
std::string GuardEscapes(std::string_view text);

}  // namespace tolvan

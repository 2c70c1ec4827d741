// The two tables that the cells of an .xlsx refer to by number: shared strings and cell formats.
#pragma once

#include <string>

#include "spreadsheet/NumberFormats.h"
#include "spreadsheet/SharedStrings.h"
#include "spreadsheet/XmlStream.h"

namespace tolvan {

/// Collects the text of one string item: its plain text or the text of its runs, without phonetic text. Shared by the
/// table of strings and the strings that stand inside cells.
class StringItem {
 public:
  void Clear();

  /// To be told of every element inside the item.
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

/// Handler of the shared strings part.
class SharedStringsHandler : public XmlHandler {
 public:
  explicit SharedStringsHandler(SharedStrings& strings) : strings_(strings) {}
  void StartElement(std::string_view name, const XmlAttributes& attributes) override;
  void EndElement() override;
  void Text(std::string_view piece) override;

 private:
  SharedStrings& strings_;
  StringItem item_;
  unsigned depth_ = 0;  // 1 in <sst>, 2 in <si>
  bool inItem_ = false;
};

/// Handler of the styles part.
class StylesHandler : public XmlHandler {
 public:
  explicit StylesHandler(CellFormats& formats) : formats_(formats) {}
  void StartElement(std::string_view name, const XmlAttributes& attributes) override;
  void EndElement() override;
  void Text(std::string_view) override {}

 private:
  CellFormats& formats_;
  unsigned depth_ = 0;
  bool inCellFormats_ = false;
};

}  // namespace tolvan

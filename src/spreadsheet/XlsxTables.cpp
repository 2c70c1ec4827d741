#include "spreadsheet/XlsxTables.h"

#include <charconv>

#include "spreadsheet/EscapedText.h"
#include "spreadsheet/WorkbookFailure.h"
#include "spreadsheet/WorkbookLimits.h"

namespace tolvan {
namespace {

std::uint32_t NumberOf(const std::optional<std::string>& text) {
  std::uint32_t number = 0;
  if (text) std::from_chars(text->data(), text->data() + text->size(), number);
  return number;
}

}  // namespace

void StringItem::Clear() {
  text_.clear();
  depth_ = phoneticDepth_ = textDepth_ = 0;
}

void StringItem::StartElement(std::string_view name) {
  ++depth_;
  if (phoneticDepth_ != 0) return;
  if (name == "rPh") phoneticDepth_ = depth_;
  if (name == "t" && textDepth_ == 0) textDepth_ = depth_;
}

void StringItem::EndElement() {
  if (phoneticDepth_ == depth_) phoneticDepth_ = 0;
  if (textDepth_ == depth_) textDepth_ = 0;
  --depth_;
}

void StringItem::Text(std::string_view piece) {
  if (textDepth_ == 0) return;
  // An escape takes seven bytes for at least one.
  if (text_.size() + piece.size() > 7 * limits::maximumTextBytes) FailTooBig("el texto de una celda");
  text_.append(piece);
}

std::string_view StringItem::Decoded() {
  DecodeEscapedText(text_);
  return text_;
}

void SharedStringsHandler::StartElement(std::string_view name, const XmlAttributes&) {
  ++depth_;
  if (inItem_) {
    item_.StartElement(name);
  } else if (depth_ == 1 && name != "sst") {
    FailDamaged("la parte de los textos no tiene el contenido esperado");
  } else if (depth_ == 2 && name == "si") {
    item_.Clear();
    inItem_ = true;
  }
}

void SharedStringsHandler::EndElement() {
  if (inItem_ && depth_ == 2) {
    strings_.Add(item_.Decoded());
    inItem_ = false;
  } else if (inItem_) {
    item_.EndElement();
  }
  --depth_;
}

void SharedStringsHandler::Text(std::string_view piece) {
  if (inItem_) item_.Text(piece);
}

void StylesHandler::StartElement(std::string_view name, const XmlAttributes& attributes) {
  ++depth_;
  if (depth_ == 2) inCellFormats_ = name == "cellXfs";
  if (depth_ != 3) return;
  if (name == "numFmt")
    formats_.DefineFormat(NumberOf(attributes.Find("numFmtId")), attributes.Find("formatCode").value_or(""));
  if (inCellFormats_ && name == "xf") formats_.AddCellFormat(NumberOf(attributes.Find("numFmtId")));
}

void StylesHandler::EndElement() {
  --depth_;
}

}  // namespace tolvan

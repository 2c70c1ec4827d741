#include "spreadsheet/XlsxParts.h"

#include <charconv>
#include <optional>
#include <unordered_map>
#include <vector>

#include "base/Text.h"
#include "host/UserInterface.h"
#include "spreadsheet/WorkbookLimits.h"
#include "spreadsheet/XmlStream.h"

namespace tolvan {
namespace {

/// Reads a whole part. Throws HostError Damaged or Interrupted and what the handler throws.
void ReadPart(const ZipPackage& package, const std::string& name, std::uint64_t limit, XmlHandler& handler,
              const Interruption& interruption) {
  const auto part = package.Open(name, limit);
  XmlStream xml(handler, name);
  std::vector<char> buffer(pieceBytes);
  while (const std::size_t count = part->Read(buffer)) {
    if (interruption.Requested()) throw HostError(HostErrorKind::Interrupted, "");
    xml.Feed({buffer.data(), count});
  }
  xml.Finish();
}

struct Relationship {
  std::string id;
  std::string type;    // the last piece of the type's address, the same in transitional and strict workbooks
  std::string target;  // the part's name
};

int HexDigit(char digit) {
  if (digit >= '0' && digit <= '9') return digit - '0';
  const char lower = static_cast<char>(digit | 0x20);
  return lower >= 'a' && lower <= 'f' ? lower - 'a' + 10 : -1;
}

std::string WithoutPercents(std::string_view target) {
  std::string plain;
  for (std::size_t i = 0; i < target.size(); ++i) {
    const bool escape = target[i] == '%' && i + 2 < target.size();
    const int high = escape ? HexDigit(target[i + 1]) : -1;
    const int low = escape ? HexDigit(target[i + 2]) : -1;
    if (high >= 0 && low >= 0) i += 2;
    plain.push_back(high >= 0 && low >= 0 ? static_cast<char>(high * 16 + low) : target[i]);
  }
  return plain;
}

std::string FolderOf(std::string_view partName) {
  return std::string(partName.substr(0, partName.rfind('/') + 1));
}

std::string RelationshipsPartOf(const std::string& partName) {
  const std::string folder = FolderOf(partName);
  return folder + "_rels/" + partName.substr(folder.size()) + ".rels";
}

/// The part that a target means, seen from the part that refers to it: "../a.xml" from "x/y/b.xml" is "x/a.xml",
/// "/a.xml" is "a.xml".
std::string ResolveTarget(std::string_view partName, std::string_view target) {
  const std::string plain = ReplaceAll(WithoutPercents(target.substr(0, target.find('#'))), "\\", "/");
  const std::string path = plain.starts_with('/') ? plain : FolderOf(partName) + plain;
  std::vector<std::string_view> kept;
  for (const std::string_view piece : Split(path, '/')) {
    if (piece.empty() || piece == ".") continue;
    if (piece != "..") {
      kept.push_back(piece);
    } else if (!kept.empty()) {
      kept.pop_back();
    }
  }
  std::string resolved;
  for (const std::string_view piece : kept) resolved.append(resolved.empty() ? "" : "/").append(piece);
  return resolved;
}

class RelationshipsHandler : public XmlHandler {
 public:
  RelationshipsHandler(std::string partName, std::vector<Relationship>& found)
      : partName_(std::move(partName)), found_(found) {}

  void StartElement(std::string_view name, const XmlAttributes& attributes) override {
    if (name != "Relationship" || attributes.Find("TargetMode") == "External") return;
    if (found_.size() >= limits::maximumListEntries) FailTooBig("la cantidad de relaciones");
    const std::string type = attributes.Find("Type").value_or("");
    found_.push_back({attributes.Find("Id").value_or(""), type.substr(type.rfind('/') + 1),
                      ResolveTarget(partName_, attributes.Find("Target").value_or(""))});
  }
  void EndElement() override {}
  void Text(std::string_view) override {}

 private:
  std::string partName_;
  std::vector<Relationship>& found_;
};

/// The relationships of a part inside the package (the package's own for an empty name), in their order; none when the
/// part has none.
std::vector<Relationship> ReadRelationships(const ZipPackage& package, const std::string& partName,
                                            const Interruption& interruption) {
  std::vector<Relationship> found;
  const std::string name = RelationshipsPartOf(partName);
  if (!package.Has(name)) return found;
  RelationshipsHandler handler(partName, found);
  ReadPart(package, name, limits::maximumSmallPartBytes, handler, interruption);
  return found;
}

class WorkbookHandler : public XmlHandler {
 public:
  std::vector<std::string> sheetIds;  // relationships, in tab order
  bool from1904 = false;
  bool isWorkbook = false;

  void StartElement(std::string_view name, const XmlAttributes& attributes) override {
    if (name == "workbook") isWorkbook = true;
    if (name == "workbookPr") {
      const auto flag = attributes.Find("date1904");
      from1904 = flag == "1" || flag == "true";
    }
    if (name != "sheet") return;
    if (sheetIds.size() >= limits::maximumListEntries) FailTooBig("la cantidad de hojas");
    sheetIds.push_back(attributes.FindRelationship("id").value_or(""));
  }
  void EndElement() override {}
  void Text(std::string_view) override {}
};

std::uint32_t NumberOf(const std::optional<std::string>& text) {
  std::uint32_t number = 0;
  if (text) std::from_chars(text->data(), text->data() + text->size(), number);
  return number;
}

class SharedStringsHandler : public XmlHandler {
 public:
  explicit SharedStringsHandler(SharedStrings& strings) : strings_(strings) {}

  void StartElement(std::string_view name, const XmlAttributes&) override {
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

  void EndElement() override {
    if (inItem_ && depth_ == 2) {
      strings_.Add(item_.Decoded());
      inItem_ = false;
    } else if (inItem_) {
      item_.EndElement();
    }
    --depth_;
  }

  void Text(std::string_view piece) override {
    if (inItem_) item_.Text(piece);
  }

 private:
  SharedStrings& strings_;
  StringItem item_;
  unsigned depth_ = 0;  // 1 in <sst>, 2 in <si>
  bool inItem_ = false;
};

class StylesHandler : public XmlHandler {
 public:
  explicit StylesHandler(CellFormats& formats) : formats_(formats) {}

  void StartElement(std::string_view name, const XmlAttributes& attributes) override {
    ++depth_;
    if (depth_ == 2) inCellFormats_ = name == "cellXfs";
    if (depth_ != 3) return;
    if (name == "numFmt")
      formats_.DefineFormat(NumberOf(attributes.Find("numFmtId")), attributes.Find("formatCode").value_or(""));
    if (inCellFormats_ && name == "xf") formats_.AddCellFormat(NumberOf(attributes.Find("numFmtId")));
  }

  void EndElement() override { --depth_; }
  void Text(std::string_view) override {}

 private:
  CellFormats& formats_;
  unsigned depth_ = 0;
  bool inCellFormats_ = false;
};

/// The cause when a zip is no workbook at all.
std::string WhatElse(const ZipPackage& package) {
  if (package.Has("content.xml")) return "es un libro de OpenDocument, no de Excel";
  if (package.Has("word/document.xml")) return "es un documento de Word, no un libro de Excel";
  return "el archivo comprimido no contiene un libro de Excel";
}

std::string FindWorkbookPart(const ZipPackage& package, const Interruption& interruption) {
  for (const Relationship& relationship : ReadRelationships(package, "", interruption))
    if (relationship.type == "officeDocument") {
      if (relationship.target.ends_with(".bin")) FailDamaged("es un libro binario (.xlsb); guárdelo como .xlsx");
      return relationship.target;
    }
  if (package.Has("xl/workbook.xml")) return "xl/workbook.xml";
  FailDamaged(WhatElse(package));
}

/// The parts that a workbook part leads to; empty names for what it does not have.
struct PartNames {
  std::string sheet;  // the first worksheet in tab order
  std::string strings;
  std::string styles;
};

PartNames FindParts(const std::vector<Relationship>& relationships, const std::vector<std::string>& sheetIds) {
  PartNames parts;
  std::unordered_map<std::string, std::string> worksheets;
  for (const Relationship& relationship : relationships) {
    if (relationship.type == "worksheet") worksheets.emplace(relationship.id, relationship.target);
    if (relationship.type == "sharedStrings") parts.strings = relationship.target;
    if (relationship.type == "styles") parts.styles = relationship.target;
  }
  // Tabs of charts, dialogs and macros are not worksheets.
  for (const std::string& id : sheetIds) {
    const auto found = worksheets.find(id);
    if (found == worksheets.end()) continue;
    parts.sheet = found->second;
    return parts;
  }
  FailDamaged("el libro no tiene ninguna hoja de cálculo");
}

constexpr std::size_t escapeLength = 7;

std::optional<char32_t> UnitAt(std::string_view text, std::size_t position) {
  if (text.size() - position < escapeLength || text[position + 1] != 'x' || text[position + 6] != '_')
    return std::nullopt;
  const char* digits = text.data() + position + 2;
  unsigned unit = 0;
  const auto [end, error] = std::from_chars(digits, digits + 4, unit, 16);
  if (error != std::errc() || end != digits + 4) return std::nullopt;
  return unit;
}

bool IsHigh(char32_t unit) {
  return unit >= 0xD800 && unit <= 0xDBFF;
}

bool IsLow(char32_t unit) {
  return unit >= 0xDC00 && unit <= 0xDFFF;
}

}  // namespace

void ReadXlsxWorkbook(const ZipPackage& package, XlsxWorkbook& workbook, const Interruption& interruption) {
  const std::string part = FindWorkbookPart(package, interruption);
  WorkbookHandler handler;
  ReadPart(package, part, limits::maximumSmallPartBytes, handler, interruption);
  if (!handler.isWorkbook) FailDamaged("la parte «" + part + "» no es un libro de Excel");
  const PartNames parts = FindParts(ReadRelationships(package, part, interruption), handler.sheetIds);
  workbook.from1904 = handler.from1904;
  workbook.sheetPart = parts.sheet;
  // A part that is referred to and missing holds nothing; cells that need it are refused where they are met.
  if (!parts.strings.empty() && package.Has(parts.strings)) {
    SharedStringsHandler strings(workbook.strings);
    ReadPart(package, parts.strings, limits::maximumPartBytes, strings, interruption);
  }
  if (!parts.styles.empty() && package.Has(parts.styles)) {
    StylesHandler styles(workbook.formats);
    ReadPart(package, parts.styles, limits::maximumSmallPartBytes, styles, interruption);
  }
}

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

void DecodeEscapedText(std::string& text) {
  std::size_t next = text.find("_x");
  if (next == std::string::npos) return;
  std::string decoded;
  std::size_t copied = 0;
  for (; next != std::string::npos; next = text.find("_x", next)) {
    const auto unit = UnitAt(text, next);
    if (!unit) {
      next += 1;
      continue;
    }
    decoded.append(text, copied, next - copied);
    next += escapeLength;
    char32_t codePoint = *unit;
    if (IsHigh(*unit) && next < text.size() && text[next] == '_') {
      if (const auto low = UnitAt(text, next); low && IsLow(*low)) {
        codePoint = 0x10000 + ((*unit - 0xD800) << 10) + (*low - 0xDC00);
        next += escapeLength;
      }
    }
    if (codePoint != 0) AppendCodePoint(decoded, codePoint);
    copied = next;
  }
  decoded.append(text, copied);
  text = std::move(decoded);
}

std::string GuardEscapes(std::string_view text) {
  std::string guarded;
  std::size_t copied = 0;
  for (std::size_t next = text.find("_x"); next != std::string_view::npos; next = text.find("_x", next + 1)) {
    if (!UnitAt(text, next)) continue;
    guarded.append(text.substr(copied, next - copied)).append("_x005F_");
    copied = next + 1;
  }
  return guarded.append(text.substr(copied));
}

}  // namespace tolvan

#include "spreadsheet/XlsxParts.h"

#include <unordered_map>

#include "base/Text.h"
#include "spreadsheet/WorkbookFailure.h"
#include "spreadsheet/WorkbookLimits.h"

namespace tolvan {
namespace {

constexpr std::size_t pieceBytes = std::size_t{64} << 10;

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

}  // namespace

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

std::vector<Relationship> ReadRelationships(const ZipPackage& package, const std::string& partName,
                                            const Interruption& interruption) {
  std::vector<Relationship> found;
  const std::string name = RelationshipsPartOf(partName);
  if (!package.Has(name)) return found;
  RelationshipsHandler handler(partName, found);
  ReadPart(package, name, limits::maximumSmallPartBytes, handler, interruption);
  return found;
}

XlsxWorkbook ReadWorkbookPart(const ZipPackage& package, const Interruption& interruption) {
  const std::string part = FindWorkbookPart(package, interruption);
  WorkbookHandler handler;
  ReadPart(package, part, limits::maximumSmallPartBytes, handler, interruption);
  if (!handler.isWorkbook) FailDamaged("la parte «" + part + "» no es un libro de Excel");
  const std::vector<Relationship> relationships = ReadRelationships(package, part, interruption);

  XlsxWorkbook workbook;
  workbook.from1904 = handler.from1904;
  std::unordered_map<std::string, std::string> worksheets;
  for (const Relationship& relationship : relationships) {
    if (relationship.type == "worksheet") worksheets.emplace(relationship.id, relationship.target);
    if (relationship.type == "sharedStrings") workbook.stringsPart = relationship.target;
    if (relationship.type == "styles") workbook.stylesPart = relationship.target;
  }
  // Tabs of charts, dialogs and macros are no worksheets.
  for (const std::string& id : handler.sheetIds) {
    const auto found = worksheets.find(id);
    if (found == worksheets.end()) continue;
    workbook.sheetPart = found->second;
    return workbook;
  }
  FailDamaged("el libro no tiene ninguna hoja de cálculo");
}

}  // namespace tolvan

// A tree takes 64 bytes for every element and every text, 350 MB for a large store. So lists of records are not in it:
// the number of the list keeps its place, between two of a character that no text of a document can hold, and the list
// is written when the tree is saved. All text in the tree is escaped when it is appended and the library's own escaping
// is off.
#include "xml/PugiXmlLibrary.h"

#include <charconv>
#include <pugixml.hpp>
#include <string>
#include <utility>
#include <vector>

#include "xml/XmlMarkup.h"

namespace tolvan {
namespace {

constexpr unsigned int asItStands = pugi::format_raw | pugi::format_no_escapes | pugi::format_no_declaration;
constexpr char listMark = '\x01';

pugi::xml_node NodeOf(XmlNode node) {
  return pugi::xml_node(static_cast<pugi::xml_node_struct*>(node.handle));
}

XmlNode HandleOf(const pugi::xml_node& node) {
  return {node.internal_object()};
}

std::optional<XmlNode> HandleIfAny(const pugi::xml_node& node) {
  if (node.empty()) return std::nullopt;
  return HandleOf(node);
}

[[noreturn]] void Refuse(const char* why, std::string_view what) {
  throw HostError(HostErrorKind::InvalidValue, why, std::string(what));
}

void RequireDone(bool done) {
  if (!done) throw HostError(HostErrorKind::Failed, "no se pudo agregar al documento XML");
}

// Names are the program's own; this keeps a slip from making a document that nobody can read.
void RequireName(std::string_view name) {
  if (!IsXmlName(name)) Refuse("nombre de elemento XML no admitido", name);
}

std::size_t ListNumber(std::string_view digits) {
  std::size_t number = 0;
  std::from_chars(digits.data(), digits.data() + digits.size(), number);
  return number;
}

class TextWriter final : public pugi::xml_writer {
 public:
  void write(const void* data, std::size_t size) override { text_.append(static_cast<const char*>(data), size); }
  std::string_view Text() const { return text_; }

 private:
  std::string text_;
};

class PugiXmlDocument final : public XmlDocument {
 public:
  XmlNode Top() const override { return HandleOf(document_); }
  bool HasChildren() const override { return !document_.first_child().empty(); }
  std::optional<XmlNode> DocumentElement() const override { return HandleIfAny(document_.document_element()); }

  void AppendProcessingInstruction(std::string_view target, std::string_view data) override;
  XmlNode AppendElement(XmlNode parent, std::string_view name) override;
  void AppendText(XmlNode parent, std::string_view text) override;
  std::optional<XmlNode> SelectSingleNode(XmlNode under, std::string_view xpath) const override;
  void AppendRecords(XmlNode parent, const XmlRecordLayout& layout, std::unique_ptr<XmlRecords> records) override;
  void Save(WholeFile& file) override;

 private:
  pugi::xml_document document_;
  std::vector<XmlRecordList> lists_;
  std::string scratch_;
};

void PugiXmlDocument::AppendProcessingInstruction(std::string_view target, std::string_view data) {
  const bool isDeclaration = target == "xml";
  if (isDeclaration && (!data.empty() || HasChildren())) Refuse("la declaración XML debe ir primero y sin datos", data);
  if (data.find(listMark) != std::string_view::npos) Refuse("texto no admitido en XML", data);
  pugi::xml_node node = document_.append_child(isDeclaration ? pugi::node_declaration : pugi::node_pi);
  RequireDone(node.set_name(std::string(target).c_str()));
  // Without a version a parser refuses the declaration.
  if (isDeclaration) RequireDone(node.append_attribute("version").set_value("1.0"));
  if (!data.empty()) RequireDone(node.set_value(data.data(), data.size()));
}

XmlNode PugiXmlDocument::AppendElement(XmlNode parent, std::string_view name) {
  RequireName(name);
  scratch_.assign(name);
  const pugi::xml_node node = NodeOf(parent).append_child(scratch_.c_str());
  RequireDone(!node.empty());
  return HandleOf(node);
}

void PugiXmlDocument::AppendText(XmlNode parent, std::string_view text) {
  pugi::xml_node node = NodeOf(parent).append_child(pugi::node_pcdata);
  RequireDone(!node.empty());
  if (text.empty()) return;
  scratch_.clear();
  AppendXmlText(scratch_, text);
  RequireDone(node.set_value(scratch_.data(), scratch_.size()));
}

std::optional<XmlNode> PugiXmlDocument::SelectSingleNode(XmlNode under, std::string_view xpath) const {
  try {
    return HandleIfAny(NodeOf(under).select_node(std::string(xpath).c_str()).node());
  } catch (const pugi::xpath_exception& error) {
    Refuse(error.what(), xpath);
  }
}

void PugiXmlDocument::AppendRecords(XmlNode parent, const XmlRecordLayout& layout,
                                    std::unique_ptr<XmlRecords> records) {
  RequireName(layout.list);
  RequireName(layout.record);
  for (const std::string_view field : layout.fields) RequireName(field);
  if (layout.fields.empty()) Refuse("faltan los campos de los registros", layout.record);
  pugi::xml_node place = NodeOf(parent).append_child(pugi::node_pcdata);
  RequireDone(!place.empty() && place.set_value((listMark + std::to_string(lists_.size()) + listMark).c_str()));
  lists_.emplace_back(layout, std::move(records));
}

void PugiXmlDocument::Save(WholeFile& file) {
  TextWriter tree;
  document_.save(tree, "", asItStands, pugi::encoding_utf8);
  std::string_view rest = tree.Text();
  for (std::size_t mark = rest.find(listMark); mark != std::string_view::npos; mark = rest.find(listMark)) {
    file.Write(rest.substr(0, mark));
    const std::size_t end = rest.find(listMark, mark + 1);
    lists_.at(ListNumber(rest.substr(mark + 1, end - mark - 1))).Write(file);
    rest.remove_prefix(end + 1);
  }
  file.Write(rest);
}

}  // namespace

std::unique_ptr<XmlDocument> PugiXmlLibrary::CreateDocument() {
  return std::make_unique<PugiXmlDocument>();
}

// There is no installer to open: a program that runs has the library.
void PugiXmlLibrary::OpenDownload(std::string_view /*address*/) noexcept {}

}  // namespace tolvan

// A tree of pugixml takes 64 bytes for every element and every text, 350 MB for a large store. So records are kept as
// finished markup in text nodes of 64 KiB. For that all text in the tree is escaped when it is appended, and the tree
// is written with the library's own escaping off.
#include "platform/xml/PugiXmlLibrary.h"

#include <exception>
#include <pugixml.hpp>
#include <string>
#include <vector>

#include "platform/xml/XmlCharacters.h"

namespace tolvan {
namespace {

constexpr unsigned int asItStands = pugi::format_raw | pugi::format_no_escapes | pugi::format_no_declaration;
constexpr std::size_t markupBlock = std::size_t{1} << 16;

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

struct Tags {
  std::string name, opening, closing;
};

/// The tags of the names used so far. Records repeat the same few names in the same order, so the next is nearly always
/// found at the first look.
class TagCache {
 public:
  /// Valid until the next call. Throws for what is no name.
  const Tags& Of(std::string_view name) {
    for (std::size_t looks = 0; looks < all_.size(); ++looks) {
      if (next_ >= all_.size()) next_ = 0;
      const Tags& tags = all_[next_++];
      if (tags.name == name) return tags;
    }
    RequireName(name);
    const std::string text(name);
    all_.push_back({text, "<" + text + ">", "</" + text + ">"});
    next_ = all_.size();
    return all_.back();
  }

 private:
  std::vector<Tags> all_;
  std::size_t next_ = 0;
};

// The library is not made for writers that throw: the first failure waits until it is done.
class FileWriter final : public pugi::xml_writer {
 public:
  explicit FileWriter(WholeFile& file) : file_(file) {}

  void write(const void* data, std::size_t size) override {
    if (failure_) return;
    try {
      file_.Write({static_cast<const char*>(data), size});
    } catch (...) {
      failure_ = std::current_exception();
    }
  }

  void RethrowFailure() const {
    if (failure_) std::rethrow_exception(failure_);
  }

 private:
  WholeFile& file_;
  std::exception_ptr failure_;
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
  void BeginRecord(XmlNode parent, std::string_view name) override;
  void AppendField(std::string_view name, std::string_view text) override;
  void EndRecord() override;
  void Save(WholeFile& file) override;

 private:
  void StoreMarkup();

  pugi::xml_document document_;
  pugi::xml_node markupNode_;  // the text node that markup_ is going to be the value of
  std::string markup_;
  std::string recordEnd_;
  TagCache tags_;
  std::string scratch_;
};

void PugiXmlDocument::AppendProcessingInstruction(std::string_view target, std::string_view data) {
  const bool isDeclaration = target == "xml";
  if (isDeclaration && (!data.empty() || HasChildren())) Refuse("la declaración XML debe ir primero y sin datos", data);
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
  if (!IsPlainXmlText(text)) {
    scratch_.clear();
    AppendXmlText(scratch_, text);
    text = scratch_;
  }
  RequireDone(node.set_value(text.data(), text.size()));
}

std::optional<XmlNode> PugiXmlDocument::SelectSingleNode(XmlNode under, std::string_view xpath) const {
  try {
    return HandleIfAny(NodeOf(under).select_node(std::string(xpath).c_str()).node());
  } catch (const pugi::xpath_exception& error) {
    Refuse(error.what(), xpath);
  }
}

void PugiXmlDocument::BeginRecord(XmlNode parent, std::string_view name) {
  const Tags& tags = tags_.Of(name);
  pugi::xml_node node = NodeOf(parent);
  // Records that follow one another share a text node; anything appended between them begins a new one.
  if (!markupNode_ || node.last_child() != markupNode_) {
    StoreMarkup();
    markupNode_ = node.append_child(pugi::node_pcdata);
    RequireDone(!markupNode_.empty());
  }
  markup_ += tags.opening;
  recordEnd_ = tags.closing;
}

void PugiXmlDocument::AppendField(std::string_view name, std::string_view text) {
  const Tags& tags = tags_.Of(name);
  markup_ += tags.opening;
  if (IsPlainXmlText(text)) {
    markup_ += text;
  } else {
    AppendXmlText(markup_, text);
  }
  markup_ += tags.closing;
}

void PugiXmlDocument::EndRecord() {
  markup_ += recordEnd_;
  if (markup_.size() >= markupBlock) StoreMarkup();
}

void PugiXmlDocument::StoreMarkup() {
  if (!markupNode_) return;
  RequireDone(markupNode_.set_value(markup_.data(), markup_.size()));
  markupNode_ = {};
  markup_.clear();
}

void PugiXmlDocument::Save(WholeFile& file) {
  StoreMarkup();
  FileWriter writer(file);
  document_.save(writer, "", asItStands, pugi::encoding_utf8);
  writer.RethrowFailure();
}

}  // namespace

std::unique_ptr<XmlDocument> PugiXmlLibrary::CreateDocument() {
  return std::make_unique<PugiXmlDocument>();
}

// There is no installer to open: a program that runs has the library.
void PugiXmlLibrary::OpenDownload(std::string_view /*address*/) noexcept {}

}  // namespace tolvan

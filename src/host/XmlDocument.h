// An XML document that is built in memory and saved. It asks for what a transport document needs and no more, so that
// it can stand on any library with elements, text and XPath.
#pragma once

#include <optional>
#include <string_view>

#include "host/FileHelper.h"

namespace tolvan {

/// A place in a document: the document itself or one of its elements. A small value that the document owns; it is valid
/// as long as the document.
struct XmlNode {
  void* handle = nullptr;
  bool operator==(const XmlNode&) const = default;
};

/// Every operation throws HostError: InvalidValue for a name, place or expression that cannot be used, Failed when the
/// library fails.
class XmlDocument {
 public:
  virtual ~XmlDocument() = default;

  /// The document itself, the parent of the document element.
  virtual XmlNode Top() const = 0;

  /// Whether anything was appended to the document.
  virtual bool HasChildren() const = 0;

  virtual std::optional<XmlNode> DocumentElement() const = 0;

  /// Appended to the document itself. Target "xml" with empty data is the declaration, saved as <?xml version="1.0"?>.
  virtual void AppendProcessingInstruction(std::string_view target, std::string_view data) = 0;

  /// A new last child of `parent`.
  virtual XmlNode AppendElement(XmlNode parent, std::string_view name) = 0;

  /// A new text node, which may be empty, behind the children of `parent`. `text` is UTF-8. Each character that XML 1.0
  /// forbids (controls other than tab and line ends, U+FFFE, U+FFFF) and each byte that begins no character is kept as
  /// U+FFFD, so that the document is always well-formed. Carriage returns survive a reader's line-end treatment.
  virtual void AppendText(XmlNode parent, std::string_view text) = 0;

  /// The first node that the XPath expression selects, seen from `under`; nothing when it selects none.
  virtual std::optional<XmlNode> SelectSingleNode(XmlNode under, std::string_view xpath) const = 0;

  /// The three together append to `parent` an element whose children each hold one text node, as AppendElement and
  /// AppendText would: begin, one AppendField for each child, end. What is saved is the same, but the element cannot be
  /// selected or appended to, so that the document may keep it in a form that takes less time and memory. Between begin
  /// and end nothing else may be done with the document.
  virtual void BeginRecord(XmlNode parent, std::string_view name) = 0;
  virtual void AppendField(std::string_view name, std::string_view text) = 0;
  virtual void EndRecord() = 0;

  /// Writes the whole document as UTF-8 without a byte order mark and without added white space. Throws what the file
  /// throws. Does not commit the file.
  virtual void Save(WholeFile& file) = 0;
};

}  // namespace tolvan

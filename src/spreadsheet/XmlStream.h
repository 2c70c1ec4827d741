// Parses one XML part that arrives in pieces and calls a handler for what stands in it; nothing of it is kept. A
// document type is refused, so that no entity is ever defined, and nothing outside the part is loaded. Elements are
// known by local name and namespace, whatever their prefix.
#pragma once

#include <cstddef>
#include <exception>
#include <memory>
#include <optional>
#include <span>
#include <string>
#include <string_view>

namespace tolvan {

/// The attributes of an element that just began, as the parser holds them.
class XmlAttributes {
 public:
  /// `parts` are five pointers for each of `count` attributes: local name, prefix, namespace, begin and end of the
  /// value.
  XmlAttributes(const unsigned char* const* parts, std::size_t count) : parts_(parts), count_(count) {}

  std::size_t Count() const { return count_; }
  const char* Name(std::size_t index) const { return Text(index, 0); }
  bool HasNamespace(std::size_t index) const { return parts_[5 * index + 2] != nullptr; }

  /// The value as it stands in the parser, in which "&" is written "&#38;".
  std::string_view Value(std::size_t index) const {
    const char* begin = Text(index, 3);
    return {begin, static_cast<std::size_t>(Text(index, 4) - begin)};
  }

  /// The value of an attribute without namespace; nothing when it is not there.
  std::optional<std::string> Find(std::string_view name) const;

  /// The attribute of that name in a namespace that ends with "/relationships".
  std::optional<std::string> FindRelationship(std::string_view name) const;

 private:
  const char* Text(std::size_t index, std::size_t part) const {
    return reinterpret_cast<const char*>(parts_[5 * index + part]);
  }

  const unsigned char* const* parts_;
  std::size_t count_;
};

class XmlHandler {
 public:
  virtual ~XmlHandler() = default;

  /// `name` is the local name in the namespaces that a workbook's parts are written in (transitional or strict), and
  /// empty in any other. What the functions throw comes out of XmlStream::Feed.
  virtual void StartElement(std::string_view name, const XmlAttributes& attributes) = 0;
  virtual void EndElement() = 0;

  /// Text inside an element, possibly in several pieces.
  virtual void Text(std::string_view piece) = 0;
};

class XmlStream {
 public:
  /// `partName` is for messages. The handler must outlive the object.
  XmlStream(XmlHandler& handler, std::string partName);
  ~XmlStream();

  /// Throws HostError Damaged where the text is not well-formed XML or has a document type.
  void Feed(std::span<const char> bytes);

  /// To be called when the part is complete. Throws HostError Damaged when the XML is not.
  void Finish();

 private:
  struct Parser;
  void Parse(std::span<const char> bytes, bool last);

  std::unique_ptr<Parser> parser_;
};

}  // namespace tolvan

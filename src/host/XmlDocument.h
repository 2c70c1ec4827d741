// An XML document that is built in memory and saved, and the library that makes one. They ask for what a transport
// document needs and no more, so that they can stand on any library with elements, text and XPath.
#pragma once

#include <cstddef>
#include <memory>
#include <optional>
#include <string_view>
#include <vector>

#include "host/FileHelper.h"
#include "host/HostError.h"

namespace tolvan {

/// A place in a document: the document itself or one of its elements. A small value that the document owns; it is valid
/// as long as the document.
struct XmlNode {
  void* handle = nullptr;
  bool operator==(const XmlNode&) const = default;
};

/// Records that a document asks for while it is saved, one after another, so that none of them has to be kept.
class XmlRecords {
 public:
  virtual ~XmlRecords() = default;

  /// Goes to the next record, at the first call to the first; false when there is none, after which it is not called
  /// again. What it throws ends the save and is thrown by it.
  virtual bool Next() = 0;

  /// The text of a field of the current record, treated as by AppendText; valid until the next call of either.
  virtual std::string_view Field(std::size_t index) const = 0;
};

/// How records stand in the document: in an element `list` one element `record` for each, and in that an element with
/// one text for each of `fields`, in their order; there is at least one. Without any record the list is an element
/// without content.
struct XmlRecordLayout {
  std::string_view list;
  std::string_view record;
  std::vector<std::string_view> fields;
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

  /// A new text node, which may be empty, after the children of `parent`. `text` is UTF-8. Each character that XML 1.0
  /// forbids (controls other than tab and line ends, U+FFFE, U+FFFF) and each byte that begins no character is kept as
  /// U+FFFD, so that the document is always well-formed. Carriage returns survive a reader's line-end treatment.
  virtual void AppendText(XmlNode parent, std::string_view text) = 0;

  /// The first node that the XPath expression selects, seen from `under`; nothing when it selects none.
  virtual std::optional<XmlNode> SelectSingleNode(XmlNode under, std::string_view xpath) const = 0;

  /// Appends a list of records to `parent`. They are asked for when the document is saved, in the order of the document
  /// and on the thread that saves; until then the list cannot be selected or appended to.
  virtual void AppendRecords(XmlNode parent, const XmlRecordLayout& layout, std::unique_ptr<XmlRecords> records) = 0;

  /// Writes the whole document as UTF-8 without a byte order mark and without added white space. Throws what the file
  /// or a list of records throws, and InvalidValue at a second save of a document that holds such a list. Does not
  /// commit the file, which may be written from another thread, but never after this has returned.
  virtual void Save(WholeFile& file) = 0;
};

/// The XML library of the machine, which on some systems may be missing. A front makes one object of it per process.
class XmlLibrary {
 public:
  virtual ~XmlLibrary() = default;

  /// Whether documents can be made. The first call tries to make one; later calls give the same answer without trying.
  bool Available() noexcept {
    if (!available_) available_ = Try();
    return *available_;
  }

  /// Why documents cannot be made, as far as it is known. Nothing while they can.
  const std::optional<HostError>& Failure() const noexcept { return failure_; }

  /// An empty document. Throws when the library is missing or fails. Never returns null.
  virtual std::unique_ptr<XmlDocument> CreateDocument() = 0;

  /// Opens the download address of the library's installer for the user. A failure is ignored.
  virtual void OpenDownload(std::string_view address) noexcept = 0;

 private:
  bool Try() noexcept {
    try {
      return CreateDocument() != nullptr;
    } catch (const HostError& error) {
      failure_ = error;
    } catch (...) {  // whatever the reason, the library cannot be used
    }
    return false;
  }

  std::optional<bool> available_;
  std::optional<HostError> failure_;
};

}  // namespace tolvan

// Markup of an XML 1.0 document: text as it stands between two tags, and lists of records.
#pragma once

#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "host/XmlDocument.h"

namespace tolvan {

/// Whether the text is a name of XML 1.0. Beyond ASCII every character counts as a letter.
bool IsXmlName(std::string_view text);

/// Appends `text` with the characters of markup written as entities, a carriage return as a character reference (a
/// reader would turn it into a line feed), and everything that XML 1.0 does not allow as U+FFFD, one for each character
/// or byte.
void AppendXmlText(std::string& out, std::string_view text);

/// A list of records as it is written into a file: the caller's thread asks for the records and keeps a block of their
/// texts, while another makes markup of the block before and writes it, so that database and disk work at once.
class XmlRecordList {
 public:
  /// The names in `layout` are names of XML; it has at least one field.
  XmlRecordList(const XmlRecordLayout& layout, std::unique_ptr<XmlRecords> records);

  /// Writes the list whole, once: throws HostError InvalidValue at a second call, and what the records or the file
  /// throw.
  void Write(WholeFile& file);

 private:
  /// Texts of many records, one after the other, and where each ends.
  struct Block {
    std::string texts;
    std::vector<std::size_t> ends;
    bool isLast = false;
  };

  /// Without texts when there is no record left.
  Block NextBlock(XmlRecords& records) const;
  void WriteMarkup(const Block& block, std::string& markup, WholeFile& file) const;

  std::unique_ptr<XmlRecords> records_;  // none once they are written
  std::string name_;
  std::vector<std::string> before_;  // what stands before the text of each field
  std::string after_;                // and after the last
};

}  // namespace tolvan

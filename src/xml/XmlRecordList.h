// A list of records as it is written into a file: the caller's thread asks for the records and keeps a block of their
// texts, while another makes markup of the block before and writes it, so that the database and the disk work at once.
#pragma once

#include <memory>
#include <string>
#include <vector>

#include "host/XmlDocument.h"

namespace tolvan {

class XmlRecordList {
 public:
  /// The names in `layout` are names of XML; it has at least one field.
  XmlRecordList(const XmlRecordLayout& layout, std::unique_ptr<XmlRecords> records);

  /// Writes the list whole, once: throws HostError InvalidValue at a second call, and what the records or the file
  /// throw.
  void Write(WholeFile& file);

 private:
  /// Texts of many records, one behind the other, and where each ends.
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
  std::string after_;                // and behind the last
};

}  // namespace tolvan

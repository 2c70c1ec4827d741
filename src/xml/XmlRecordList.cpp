#include "xml/XmlRecordList.h"

#include <future>
#include <utility>

#include "xml/XmlCharacters.h"

namespace tolvan {
namespace {

constexpr std::size_t blockSize = std::size_t{1} << 18;  // bytes

std::string Opening(std::string_view name) {
  return "<" + std::string(name) + ">";
}

std::string Closing(std::string_view name) {
  return "</" + std::string(name) + ">";
}

}  // namespace

XmlRecordList::XmlRecordList(const XmlRecordLayout& layout, std::unique_ptr<XmlRecords> records)
    : records_(std::move(records)), name_(layout.list) {
  std::string before = Opening(layout.record);
  for (const std::string_view field : layout.fields) {
    before_.push_back(before + Opening(field));
    before = Closing(field);
  }
  after_ = before + Closing(layout.record);
}

void XmlRecordList::Write(WholeFile& file) {
  const std::unique_ptr<XmlRecords> records = std::move(records_);
  if (!records) throw HostError(HostErrorKind::InvalidValue, "el documento XML ya se guardó", name_);
  Block block = NextBlock(*records);
  if (block.ends.empty()) return file.Write("<" + name_ + "/>");
  file.Write(Opening(name_));
  Block writing;
  std::string markup;
  std::future<void> written;  // goes before what it works on, and waits for it
  while (!block.ends.empty()) {
    if (written.valid()) written.get();
    std::swap(block, writing);
    // The last block, which may be the only one, is not worth a thread; nor is it an error that none is to be had.
    const auto where = writing.isLast ? std::launch::deferred : std::launch::async | std::launch::deferred;
    written = std::async(where, [&] { WriteMarkup(writing, markup, file); });
    block = writing.isLast ? Block() : NextBlock(*records);
  }
  written.get();
  file.Write(Closing(name_));
}

XmlRecordList::Block XmlRecordList::NextBlock(XmlRecords& records) const {
  Block block;
  block.texts.reserve(blockSize + blockSize / 4);
  while (block.texts.size() + block.ends.size() * sizeof(std::size_t) < blockSize) {
    if (!records.Next()) {
      block.isLast = true;
      return block;
    }
    for (std::size_t field = 0; field < before_.size(); ++field) {
      block.texts.append(records.Field(field));
      block.ends.push_back(block.texts.size());
    }
  }
  return block;
}

void XmlRecordList::WriteMarkup(const Block& block, std::string& markup, WholeFile& file) const {
  markup.clear();
  std::size_t field = 0;
  std::size_t begin = 0;
  for (const std::size_t end : block.ends) {
    markup += before_[field];
    AppendXmlText(markup, std::string_view(block.texts).substr(begin, end - begin));
    begin = end;
    if (++field < before_.size()) continue;
    markup += after_;
    field = 0;
  }
  file.Write(markup);
}

}  // namespace tolvan

#include "xml/XmlMarkup.h"

#include <algorithm>
#include <future>
#include <utility>

#include "base/Text.h"

namespace tolvan {
namespace {

constexpr char32_t replacement = 0xFFFD;

bool IsPlain(char c) {
  return (c >= 0x20 && c < 0x7F && c != '&' && c != '<' && c != '>') || c == '\t' || c == '\n';
}

/// Quick; may say no to a text that needs no change.
bool IsPlainText(std::string_view text) {
  // Without an early end, so that the compiler can look at many bytes at once; nearly every text is plain.
  unsigned other = 0;
  for (const char c : text) {
    const auto byte = static_cast<unsigned char>(c);
    other |= static_cast<unsigned>(byte < 0x20) | static_cast<unsigned>(byte > 0x7E) |
             static_cast<unsigned>(byte == '&') | static_cast<unsigned>(byte == '<') |
             static_cast<unsigned>(byte == '>');
  }
  return other == 0;
}

// Stray bytes come from NextCodePoint as surrogates, which are not allowed either.
bool IsAllowed(char32_t c) {
  if (c < 0x20) return c == '\t' || c == '\n' || c == '\r';
  return (c < 0xD800 || c > 0xDFFF) && c != 0xFFFE && c != 0xFFFF && c <= 0x10FFFF;
}

void AppendCharacter(std::string& out, char32_t c) {
  switch (c) {
    case '&':
      out += "&amp;";
      break;
    case '<':
      out += "&lt;";
      break;
    case '>':
      out += "&gt;";
      break;
    case '\r':
      out += "&#13;";
      break;
    default:
      AppendCodePoint(out, IsAllowed(c) ? c : replacement);
  }
}

constexpr std::size_t blockSize = std::size_t{1} << 18;  // bytes

std::string Opening(std::string_view name) {
  return "<" + std::string(name) + ">";
}

std::string Closing(std::string_view name) {
  return "</" + std::string(name) + ">";
}

}  // namespace

bool IsXmlName(std::string_view text) {
  const auto isLetter = [](char c) {
    return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || c == '_' || static_cast<unsigned char>(c) > 0x7F;
  };
  const auto follows = [&](char c) { return isLetter(c) || (c >= '0' && c <= '9') || c == '-' || c == '.'; };
  return !text.empty() && isLetter(text.front()) && std::all_of(text.begin(), text.end(), follows);
}

void AppendXmlText(std::string& out, std::string_view text) {
  if (IsPlainText(text)) {
    out += text;
    return;
  }
  for (std::size_t position = 0; position < text.size();) {
    const auto* const start = text.begin() + position;
    const auto* const stop = std::find_if_not(start, text.end(), IsPlain);
    out.append(start, stop);
    position += static_cast<std::size_t>(stop - start);
    if (position < text.size()) AppendCharacter(out, NextCodePoint(text, position));
  }
}

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
    // The last block, which may be the only one, is not worth a thread; nor is it an error when none can be started.
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

// Any bytes as the parts of an .xlsx: through a zip and its checksums a fuzzer hardly reaches the parsers. The input is
// cut at every NUL into shared strings, styles, workbook and sheet, which are stored in a zip that is right.
#include <zlib.h>

#include <array>
#include <string>
#include <string_view>

#include "ReadAll.h"

namespace {

void Append(std::string& out, std::uint64_t value, int bytes) {
  for (int i = 0; i < bytes; ++i) out.push_back(static_cast<char>(value >> (8 * i) & 0xFF));
}

/// What the local and the central record of a stored entry have in common.
std::string Common(std::string_view name, std::string_view content) {
  std::string head;
  Append(head, 20, 2);
  Append(head, 0, 2 + 2 + 2 + 2);
  head.resize(10);
  const auto crc = crc32(0, reinterpret_cast<const Bytef*>(content.data()), static_cast<uInt>(content.size()));
  Append(head, static_cast<std::uint32_t>(crc), 4);
  Append(head, static_cast<std::uint32_t>(content.size()), 4);
  Append(head, static_cast<std::uint32_t>(content.size()), 4);
  Append(head, static_cast<std::uint32_t>(name.size()), 2);
  Append(head, 0, 2);
  return head;
}

class StoredZip {
 public:
  void Add(std::string_view name, std::string_view content) {
    const std::string common = Common(name, content);
    directory_ += std::string("PK\1\2\24\0", 6) + common + std::string(10, '\0');
    Append(directory_, static_cast<std::uint32_t>(zip_.size()), 4);
    directory_ += name;
    zip_ += std::string("PK\3\4", 4) + common + std::string(name) + std::string(content);
    ++count_;
  }

  std::string Finish() {
    std::string end("PK\5\6\0\0\0\0", 8);
    Append(end, count_, 2);
    Append(end, count_, 2);
    Append(end, static_cast<std::uint32_t>(directory_.size()), 4);
    Append(end, static_cast<std::uint32_t>(zip_.size()), 4);
    Append(end, 0, 2);
    return zip_ + directory_ + end;
  }

 private:
  std::string zip_;
  std::string directory_;
  std::uint32_t count_ = 0;
};

constexpr std::string_view relationships =
    R"(<Relationships xmlns="http://schemas.openxmlformats.org/package/2006/relationships">)"
    R"(<Relationship Id="rId1" Type="x/worksheet" Target="sheet.xml"/>)"
    R"(<Relationship Id="rId2" Type="x/sharedStrings" Target="strings.xml"/>)"
    R"(<Relationship Id="rId3" Type="x/styles" Target="styles.xml"/></Relationships>)";

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  constexpr std::array<std::string_view, 4> names{"xl/strings.xml", "xl/styles.xml", "xl/workbook.xml", "xl/sheet.xml"};
  StoredZip zip;
  zip.Add("xl/_rels/workbook.xml.rels", relationships);
  std::string_view rest(reinterpret_cast<const char*>(data), size);
  for (const std::string_view name : names) {
    const std::string_view part = rest.substr(0, rest.find('\0'));
    zip.Add(name, part);
    rest.remove_prefix(std::min(rest.size(), part.size() + 1));
  }
  const std::string workbook = zip.Finish();
  tolvan::ReadAll(tolvan::ReadXlsx, reinterpret_cast<const std::uint8_t*>(workbook.data()), workbook.size());
  return 0;
}

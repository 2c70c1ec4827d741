// Any bytes as a registry file, through a buffer whose size the first byte chooses: the reader must give the lines that
// a cut at every LF gives, and the import must make of each what its rules say, whatever the size of its blocks.
#include <cstdint>
#include <cstdlib>
#include <string>
#include <string_view>

#include "base/Text.h"
#include "fiscal/RegistryBlock.h"
#include "fiscal/RegistryFile.h"
#include "fiscal/RegistryLines.h"
#include "fiscal/clsInfoFiscalClienteDO.h"

namespace tolvan {
namespace {

class Bytes final : public InputFile {
 public:
  explicit Bytes(std::string_view bytes) : bytes_(bytes) {}
  std::uint64_t Size() const override { return bytes_.size(); }
  std::size_t Read(std::span<char> buffer) override {
    const std::size_t count = bytes_.copy(buffer.data(), buffer.size());
    bytes_.remove_prefix(count);
    return count;
  }

 private:
  std::string_view bytes_;
};

class Never final : public Interruption {
 public:
  bool Requested() const noexcept override { return false; }
};

void Require(bool holds) {
  if (!holds) std::abort();
}

/// The next line of `rest`, which is cut off it; false at the end.
bool PlainLine(std::string_view& rest, std::string_view& line) {
  if (rest.empty()) return false;
  const std::size_t end = rest.find('\n');
  line = rest.substr(0, end);
  rest = end == std::string_view::npos ? std::string_view() : rest.substr(end + 1);
  if (line.ends_with('\r')) line.remove_suffix(1);
  return true;
}

void TakeLine(RegistryBlock& block, const RegistryLine& line, std::string_view whole, bool utf8) {
  const RegistryFields fields = CutRegistryLine(line);
  Require((fields.kind == FieldsKind::NoSeparator) == (whole.find('|') == std::string_view::npos));
  if (fields.kind != FieldsKind::Two) {
    block.AddRejected(1, RejectionKind::Skipped, line.text, utf8);
    Require(IsValidUtf8(block.ExcerptOf(block.Lines().back())));
    return;
  }
  Require(fields.identifier == whole.substr(0, whole.find('|')));
  std::string identifier(fields.identifier);
  clsInfoFiscalClienteDO identity;
  identity.ReconocerRif(identifier);
  if (!identity.EsValido()) return;
  block.AddCustomer(1, identity.ValorCodigo(), fields.name, utf8, identity.Personeria());
  const CustomerRow row = block.RowOf(block.Lines().back());
  Require(row.code == identifier && (row.code.size() == 9 || row.code.size() == 11));
  Require(IsValidUtf8(row.name) && CountCharacters(row.name) <= longestName);
}

void RequireOrder(RegistryBlock& block) {
  const BlockLine* last = nullptr;
  for (const std::uint32_t place : block.OrderByCode()) {
    const BlockLine& line = block.Lines()[place];
    if (last != nullptr) {
      const std::string_view before = block.RowOf(*last).code;
      const std::string_view code = block.RowOf(line).code;
      Require(before < code || (before == code && last < &line));
    }
    last = &line;
  }
}

void Run(std::string_view input) {
  if (input.empty()) return;
  const std::size_t bufferSize = 8 + static_cast<unsigned char>(input.front());
  std::string_view rest = input.substr(1);
  Bytes file(rest);
  const Never never;
  RegistryLineReader reader(file, never, bufferSize);
  RegistryBlock block;
  RegistryLine line;
  std::string_view whole;
  const bool utf8 = BeginsAsUtf8(rest);
  while (PlainLine(rest, whole)) {
    Require(reader.Next(line));
    Require(line.length == whole.size() && whole.starts_with(line.text));
    Require(line.IsWhole() || line.text.size() + 1 >= bufferSize);
    TakeLine(block, line, whole, utf8);
  }
  Require(!reader.Next(line));
  RequireOrder(block);
}

}  // namespace
}  // namespace tolvan

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  tolvan::Run({reinterpret_cast<const char*>(data), size});
  return 0;
}

#include "spreadsheet/SharedStrings.h"

#include "spreadsheet/WorkbookFailure.h"
#include "spreadsheet/WorkbookLimits.h"

namespace tolvan {
namespace {

constexpr std::size_t blockBytes = std::size_t{1} << 20;
constexpr std::size_t maximumBlocks = limits::maximumSharedTextBytes / blockBytes;
static_assert(limits::maximumTextBytes <= blockBytes && maximumBlocks <= 4096, "the fields of Entry");

}  // namespace

void SharedStrings::Add(std::string_view text) {
  if (text.size() > limits::maximumTextBytes) FailTooBig("el texto de una celda");
  if (entries_.size() >= limits::maximumSharedStrings) FailTooBig("la cantidad de textos");
  if (blocks_.empty() || blocks_.back().size() + text.size() > blockBytes) {
    if (blocks_.size() >= maximumBlocks) FailTooBig("el tamaño de los textos");
    blocks_.emplace_back().reserve(blockBytes);
  }
  // An empty text at the very end of a full block still needs an offset that fits its field.
  const std::size_t offset = text.empty() ? 0 : blocks_.back().size();
  blocks_.back().append(text);
  entries_.push_back({static_cast<std::uint32_t>(offset) & 0xFFFFFU,
                      static_cast<std::uint32_t>(blocks_.size() - 1) & 0xFFFU,
                      static_cast<std::uint32_t>(text.size())});
}

}  // namespace tolvan

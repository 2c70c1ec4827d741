#include "fiscal/RegistryBlock.h"

#include <algorithm>

#include "fiscal/RegistryLines.h"

namespace tolvan {
namespace {

constexpr std::size_t longestCode = 11;

/// A code as a number in base 11 whose order is that of the texts: a text that ends sorts before any digit.
std::uint64_t KeyOf(std::string_view code) {
  std::uint64_t key = 0;
  for (std::size_t index = 0; index < longestCode; ++index) {
    key = key * 11 + (index < code.size() ? static_cast<std::uint64_t>(code[index] - '0') + 1 : 0);
  }
  return key;
}

}  // namespace

void RegistryBlock::Clear() {
  lines_.clear();
  text_.clear();
}

void RegistryBlock::AddCustomer(std::int64_t number, std::string_view code, std::string_view name, bool utf8,
                                int personeria) {
  BlockLine& line = lines_.emplace_back();
  line.number = number;
  line.key = KeyOf(code);
  line.textStart = static_cast<std::uint32_t>(text_.size());
  line.codeLength = static_cast<std::uint8_t>(code.size());
  line.personeria = static_cast<std::uint8_t>(personeria);
  text_ += code;
  const std::size_t nameStart = text_.size();
  AppendCharacters(text_, name, longestName, utf8);
  line.nameLength = static_cast<std::uint16_t>(text_.size() - nameStart);
}

void RegistryBlock::AddRejected(std::int64_t number, RejectionKind kind, std::string_view bytes, bool utf8) {
  BlockLine& line = lines_.emplace_back();
  line.number = number;
  line.outcome = LineOutcome::Rejected;
  line.rejection = kind;
  line.textStart = static_cast<std::uint32_t>(text_.size());
  AppendCharacters(text_, bytes, excerptLength, utf8);
  line.nameLength = static_cast<std::uint16_t>(text_.size() - line.textStart);
}

CustomerRow RegistryBlock::RowOf(const BlockLine& line) const {
  const std::string_view text = text_;
  return {.code = text.substr(line.textStart, line.codeLength),
          .name = text.substr(line.textStart + line.codeLength, line.nameLength),
          .personeria = line.personeria};
}

std::string RegistryBlock::ExcerptOf(const BlockLine& line) const {
  const CustomerRow row = RowOf(line);
  if (row.code.empty()) return std::string(row.name);
  return std::string(row.code) + '|' + std::string(row.name);
}

const std::vector<std::uint32_t>& RegistryBlock::OrderByCode() {
  sorting_.clear();
  for (std::size_t place = 0; place < lines_.size(); ++place) {
    if (lines_[place].key != 0) sorting_.push_back({lines_[place].key, static_cast<std::uint32_t>(place)});
  }
  std::sort(sorting_.begin(), sorting_.end(), [](const SortEntry& left, const SortEntry& right) {
    return left.key != right.key ? left.key < right.key : left.place < right.place;
  });
  order_.clear();
  for (const SortEntry& entry : sorting_) order_.push_back(entry.place);
  return order_;
}

}  // namespace tolvan

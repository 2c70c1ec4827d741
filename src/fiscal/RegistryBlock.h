// A block: the lines of the registry that are written together, with where each came from, what it says and what became
// of it. The texts of all lines lie in one string.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "fiscal/RegistryReport.h"

namespace tolvan {

/// What the customer table gets of one taxpayer.
struct CustomerRow {
  std::string_view code;  ///< digits, check digit included; also what reports show
  std::string_view name;  ///< UTF-8, at most 125 characters, no NUL
  int personeria = 0;     ///< 1 legal person, 0 natural person
};

enum class LineOutcome : std::uint8_t { Pending, Inserted, Present, Rejected };

struct BlockLine {
  std::int64_t number = 0;  ///< in the file, from 1
  std::uint64_t key = 0;    ///< orders codes as their text does; 0 for a line that is rejected from the start
  std::uint32_t textStart = 0;
  std::uint16_t nameLength = 0;  ///< bytes; of a rejected line its excerpt's
  std::uint8_t codeLength = 0;
  std::uint8_t personeria = 0;
  LineOutcome outcome = LineOutcome::Pending;
  RejectionKind rejection = RejectionKind::Skipped;
};

class RegistryBlock {
 public:
  /// Rejected lines show so many of their characters.
  static constexpr std::size_t excerptLength = 200;

  bool IsEmpty() const { return lines_.empty(); }
  std::size_t Size() const { return lines_.size(); }

  /// Memory that the texts take, in bytes.
  std::size_t TextSize() const { return text_.size(); }

  void Clear();

  /// Appends a customer to be written. `name` is in the file's own encoding.
  void AddCustomer(std::int64_t number, std::string_view code, std::string_view name, bool utf8, int personeria);

  /// Appends a line that is not written.
  void AddRejected(std::int64_t number, RejectionKind kind, std::string_view bytes, bool utf8);

  std::vector<BlockLine>& Lines() { return lines_; }
  const std::vector<BlockLine>& Lines() const { return lines_; }

  CustomerRow RowOf(const BlockLine& line) const;

  /// Of a rejected line its beginning; of a customer code, "|" and name.
  std::string ExcerptOf(const BlockLine& line) const;

  /// The places of the customers in the order of their codes, those of one code in the order of the file.
  const std::vector<std::uint32_t>& OrderByCode();

 private:
  struct SortEntry {
    std::uint64_t key;
    std::uint32_t place;
  };

  std::vector<BlockLine> lines_;
  std::string text_;
  std::vector<SortEntry> sorting_;
  std::vector<std::uint32_t> order_;
};

}  // namespace tolvan

#include "import/StoredCodes.h"

#include <algorithm>

#include "base/Text.h"

namespace tolvan {
namespace {

bool IsAscii(std::string_view text) {
  return std::all_of(text.begin(), text.end(), [](char c) { return static_cast<signed char>(c) >= 0; });
}

/// As the engine compares them.
bool SameToEngine(std::string_view left, std::string_view right) {
  const auto lower = [](char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c + 32) : c; };
  return std::equal(left.begin(), left.end(), right.begin(), right.end(),
                    [&](char a, char b) { return lower(a) == lower(b); });
}

}  // namespace

StoredCodes StoredCodes::Load(DatabaseServices& database, std::string_view table, std::string_view column) {
  StoredCodes codes;
  if (database.FindsCodesInAnyCase()) return codes;
  const std::string select = "SELECT " + std::string(column) + " FROM " + std::string(table);
  const auto rows = database.OpenRecordset(SqlStatement(select));
  for (; !rows->AtEnd(); rows->MoveNext()) {
    const std::string_view code = rows->Text(0);
    if (!IsAscii(code)) codes.byUpperCase_[ToUpper(code)].emplace_back(code);
  }
  for (auto& [upper, stored] : codes.byUpperCase_) {
    // "ſ" and "ı" have capitals in ASCII, and such a code may be stored beside theirs.
    if (!IsAscii(upper)) continue;
    SqlStatement plain(select + " WHERE " + std::string(column) + " = ");
    if (!database.OpenRecordset(plain.Text(upper))->AtEnd()) stored.push_back(upper);
  }
  return codes;
}

std::string_view StoredCodes::SpellingOf(std::string_view code) const {
  if (byUpperCase_.empty()) return code;
  const auto found = byUpperCase_.find(ToUpper(code));
  if (found == byUpperCase_.end()) return code;
  const std::vector<std::string>& stored = found->second;
  const bool isStored =
      std::any_of(stored.begin(), stored.end(), [&](const std::string& each) { return SameToEngine(each, code); });
  return isStored ? code : std::string_view(stored.front());
}

}  // namespace tolvan

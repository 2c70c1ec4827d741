#include "import/StoreTables.h"

#include <algorithm>
#include <charconv>

#include "base/Text.h"

namespace tolvan {
namespace {

constexpr std::int64_t wholeRate = 100'000'000;
constexpr double tooLargeForRate = 1e7;

std::optional<double> NumberOf(const FieldValue& value) {
  if (IsNull(value) || std::holds_alternative<DateTime>(value)) return std::nullopt;
  const std::string text = TextOf(value);
  double number = 0;
  const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
  if (error != std::errc() || end != text.data() + text.size()) return std::nullopt;
  return number;
}

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

std::optional<Rate> Rate::Of(const FieldValue& value) {
  const std::optional<double> number = NumberOf(value);
  if (!number || !(*number >= 0 && *number < tooLargeForRate)) return std::nullopt;
  // Ten-thousandths of ten-thousandths: the conversion rounds the decimal text, not its binary neighbour.
  const std::optional<Currency> scaled = Currency::FromDouble(*number * static_cast<double>(Currency::unit));
  if (!scaled) return std::nullopt;
  return Rate(scaled->TenThousandths());
}

Currency Rate::WithTax(Currency net) const {
  return net.ScaledBy(wholeRate + count_, wholeRate);
}

Currency Rate::WithoutTax(Currency withTax) const {
  return withTax.ScaledBy(wholeRate, wholeRate + count_);
}

Currency Rate::Divide(Currency amount) const {
  return amount.ScaledBy(wholeRate, count_);
}

TaxTable TaxTable::Load(DatabaseServices& database) {
  TaxTable table;
  const auto rows = database.OpenRecordset(SqlStatement("SELECT ClaseI, Tasa, EsGeneral FROM Impuestos"));
  for (; !rows->AtEnd(); rows->MoveNext()) {
    const std::optional<std::int64_t> taxClass = IntegerOf(rows->Value(std::size_t{0}));
    const FieldValue written = rows->Value(std::size_t{1});
    const std::optional<Rate> rate = Rate::Of(written);
    if (!taxClass || !rate) {
      throw HostError(HostErrorKind::InvalidValue, "la tasa de un impuesto no es una fracción: " + TextOf(written));
    }
    table.rates_.emplace(*taxClass, *rate);
    if (BooleanOf(rows->Value(std::size_t{2})).value_or(false)) table.generalClass_ = *taxClass;
  }
  return table;
}

Rate TaxTable::RateOf(std::int64_t taxClass) const {
  const auto found = rates_.find(taxClass);
  return found == rates_.end() ? Rate() : found->second;
}

DepartmentTable DepartmentTable::Load(DatabaseServices& database) {
  DepartmentTable table;
  const auto rows = database.OpenRecordset(SqlStatement("SELECT idDepartamento, RequerirSeriales FROM Departamentos"));
  for (; !rows->AtEnd(); rows->MoveNext()) {
    const bool requiresSerials = BooleanOf(rows->Value(std::size_t{1})).value_or(false);
    table.requiresSerials_.emplace(ToUpper(rows->Text(0)), requiresSerials);
  }
  return table;
}

bool DepartmentTable::Contains(std::string_view department) const {
  return requiresSerials_.contains(ToUpper(department));
}

bool DepartmentTable::RequiresSerials(std::string_view department) const {
  const auto found = requiresSerials_.find(ToUpper(department));
  return found != requiresSerials_.end() && found->second;
}

Rate LoadForeignFactor(DatabaseServices& database) {
  SqlStatement statement("SELECT idMoneda, FactorConversion FROM Monedas WHERE MonedaExtranjera = ");
  const auto rows = database.OpenRecordset(statement.Boolean(true));
  if (rows->AtEnd()) throw HostError(HostErrorKind::InvalidValue, "no hay una moneda extranjera registrada");
  const std::optional<Rate> factor = Rate::Of(rows->Value(std::size_t{1}));
  if (!factor || factor->IsZero()) {
    throw HostError(HostErrorKind::InvalidValue,
                    "el factor de conversión de la moneda " + std::string(rows->Text(0)) + " no es utilizable");
  }
  return *factor;
}

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

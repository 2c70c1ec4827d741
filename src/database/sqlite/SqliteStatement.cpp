#include "database/sqlite/SqliteStatement.h"

#include <sqlite3.h>

#include <algorithm>
#include <charconv>
#include <memory>
#include <utility>

#include "base/Text.h"
#include "database/sql/SqlDialects.h"
#include "database/sqlite/SqliteConnection.h"
#include "host/HostError.h"

namespace tolvan {
namespace {

constexpr std::size_t longestContext = 2'000;  // characters

std::string Shortened(std::string_view text) {
  const std::string_view kept = FirstCharacters(text, longestContext);
  return kept.size() == text.size() ? std::string(text) : std::string(kept) + "…";
}

/// The rendered text, or the one with "?" when a literal cannot be rendered.
std::string ContextOf(const SqlStatement& statement) {
  try {
    return Shortened(statement.Render(SqliteDialect()));
  } catch (const HostError&) {
    return Shortened(statement.ParameterText());
  }
}

bool IsBlankTail(sqlite3* database, const char* tail, const char* end) {
  while (tail != end) {
    sqlite3_stmt* next = nullptr;
    const char* rest = nullptr;
    const int code = sqlite3_prepare_v2(database, tail, static_cast<int>(end - tail), &next, &rest);
    sqlite3_finalize(next);
    if (code != SQLITE_OK || next != nullptr) return false;
    if (rest == tail) return true;
    tail = rest;
  }
  return true;
}

/// The double that the decimal text of the value reads as. Up to 2^53 ten-thousandths one division is exact enough.
double NearestDouble(Currency money) {
  constexpr std::int64_t exact = std::int64_t{1} << 53;
  const std::int64_t count = money.TenThousandths();
  if (count >= -exact && count <= exact) return money.ToDouble();
  const std::string text = money.ToShortestText();
  double value = 0;
  std::from_chars(text.data(), text.data() + text.size(), value);
  return value;
}

int BindMoney(sqlite3_stmt* statement, int place, Currency money) {
  const std::int64_t count = money.TenThousandths();
  if (count % Currency::unit == 0) return sqlite3_bind_int64(statement, place, count / Currency::unit);
  return sqlite3_bind_double(statement, place, NearestDouble(money));
}

int BindText(sqlite3_stmt* statement, int place, std::string_view text, sqlite3_destructor_type destructor) {
  return sqlite3_bind_text64(statement, place, text.data(), text.size(), destructor, SQLITE_UTF8);
}

}  // namespace

SqliteStatement::SqliteStatement(SqliteConnection& connection, const SqlStatement& statement)
    : connection_(connection) {
  const std::string& text = statement.ParameterText();
  RequireNoNul(text);
  connection.Watchdog().BeginStatement();
  sqlite3_stmt* prepared = nullptr;
  const char* tail = nullptr;
  const int code = sqlite3_prepare_v3(connection.Handle(), text.data(), static_cast<int>(text.size() + 1),
                                      SQLITE_PREPARE_PERSISTENT, &prepared, &tail);
  connection.Watchdog().EndCall();
  handle_.reset(prepared);
  if (code != SQLITE_OK) throw connection.ErrorOf(code, ContextOf(statement));
  if (handle_ == nullptr || !IsBlankTail(connection.Handle(), tail, text.data() + text.size())) {
    throw HostError(HostErrorKind::Statement, "el texto no es una sola instrucción", ContextOf(statement));
  }
  parameterCount_ = static_cast<std::size_t>(sqlite3_bind_parameter_count(handle_.get()));
  Describe();
}

void SqliteStatement::Finalize::operator()(sqlite3_stmt* handle) const noexcept {
  sqlite3_finalize(handle);
}

void SqliteStatement::Bind(std::span<const SqlLiteral> literals, Lifetime lifetime) {
  if (literals.size() != parameterCount_) {
    throw HostError(HostErrorKind::Statement, "los valores no corresponden a la instrucción", ExpandedText());
  }
  int place = 0;
  for (const SqlLiteral& literal : literals) BindOne(++place, literal, lifetime);
}

void SqliteStatement::BindOne(int place, const SqlLiteral& literal, Lifetime lifetime) {
  const auto destructor = lifetime == Lifetime::Kept ? SQLITE_STATIC : SQLITE_TRANSIENT;
  const int code = std::visit(
      Match{
          [&](std::monostate) { return sqlite3_bind_null(handle_.get(), place); },
          [&](bool flag) { return sqlite3_bind_int(handle_.get(), place, flag ? 1 : 0); },
          [&](std::int64_t number) { return sqlite3_bind_int64(handle_.get(), place, number); },
          [&](Currency money) { return BindMoney(handle_.get(), place, money); },
          [&](const DateTime& moment) { return BindText(handle_.get(), place, moment.ToIsoText(), SQLITE_TRANSIENT); },
          [&](const std::string& text) {
            RequireNoNul(text);
            return BindText(handle_.get(), place, text, destructor);
          }},
      literal);
  if (code != SQLITE_OK) throw connection_.ErrorOf(code, ExpandedText());
}

bool SqliteStatement::Step() {
  connection_.Watchdog().BeginStatement();
  const int code = sqlite3_step(handle_.get());
  connection_.Watchdog().EndCall();
  if (code != SQLITE_ROW && code != SQLITE_DONE) throw connection_.ErrorOf(code, ExpandedText());
  if (sqlite3_stmt_status(handle_.get(), SQLITE_STMTSTATUS_REPREPARE, 0) != preparations_) Describe();
  return code == SQLITE_ROW;
}

void SqliteStatement::Reset() noexcept {
  sqlite3_reset(handle_.get());
  sqlite3_clear_bindings(handle_.get());
}

std::optional<std::size_t> SqliteStatement::FindColumn(std::string_view name) const {
  for (std::size_t index = 0; index < columns_.size(); ++index) {
    if (EqualIgnoringCase(columns_[index].name, name)) return index;
  }
  return std::nullopt;
}

FieldValue SqliteStatement::Value(std::size_t index) const {
  const int column = static_cast<int>(index);
  const int type = sqlite3_column_type(handle_.get(), column);
  if (type == SQLITE_NULL) return std::monostate();
  if (type == SQLITE_FLOAT) return sqlite3_column_double(handle_.get(), column);
  if (type == SQLITE_INTEGER) {
    const std::int64_t number = sqlite3_column_int64(handle_.get(), column);
    if (columns_[index].kind == ColumnKind::Boolean) return number != 0;
    return number;
  }
  std::string scratch;
  const std::string_view text = Text(index, scratch);
  if (columns_[index].kind == ColumnKind::Moment) {
    if (const auto moment = DateTime::Parse(text)) return *moment;
  }
  return std::string(text);
}

std::string_view SqliteStatement::Text(std::size_t index, std::string& scratch) const {
  const int column = static_cast<int>(index);
  const int type = sqlite3_column_type(handle_.get(), column);
  if (type == SQLITE_NULL) return {};
  if (type != SQLITE_TEXT && type != SQLITE_BLOB) {
    scratch = TextOf(Value(index));
    return scratch;
  }
  const void* const bytes = sqlite3_column_blob(handle_.get(), column);
  const std::string_view text(static_cast<const char*>(bytes),
                              static_cast<std::size_t>(sqlite3_column_bytes(handle_.get(), column)));
  if (columns_[index].kind != ColumnKind::Moment) return text;
  const auto moment = DateTime::Parse(text);
  if (!moment) return text;
  scratch = moment->ToIsoText();
  return scratch;
}

SqliteStatement::ColumnKind SqliteStatement::KindOf(const char* declaredType) {
  if (declaredType == nullptr) return ColumnKind::Plain;  // an expression
  if (EqualIgnoringCase(declaredType, "BOOLEAN")) return ColumnKind::Boolean;
  if (EqualIgnoringCase(declaredType, "DATETIME")) return ColumnKind::Moment;
  return ColumnKind::Plain;
}

void SqliteStatement::Describe() {
  preparations_ = sqlite3_stmt_status(handle_.get(), SQLITE_STMTSTATUS_REPREPARE, 0);
  columns_.clear();
  std::vector<std::string> names;
  const int count = sqlite3_column_count(handle_.get());
  for (int column = 0; column < count; ++column) {
    names.emplace_back(sqlite3_column_name(handle_.get(), column));
    columns_.push_back({names.back(), KindOf(sqlite3_column_decltype(handle_.get(), column))});
  }
  names_ = std::make_shared<const std::vector<std::string>>(std::move(names));
}

std::string SqliteStatement::ExpandedText() const {
  const std::unique_ptr<char, decltype(&sqlite3_free)> text(sqlite3_expanded_sql(handle_.get()), &sqlite3_free);
  return Shortened(text ? text.get() : sqlite3_sql(handle_.get()));
}

SqliteStatementCache::Lease::Lease(Entry& entry) : entry_(&entry), statement_(entry.statement.get()) {
  entry.lent = true;
}

SqliteStatementCache::Lease::Lease(std::unique_ptr<SqliteStatement> own)
    : own_(std::move(own)), statement_(own_.get()) {}

SqliteStatementCache::Lease::Lease(Lease&& other) noexcept
    : entry_(std::exchange(other.entry_, nullptr)),
      own_(std::move(other.own_)),
      statement_(std::exchange(other.statement_, nullptr)) {}

SqliteStatementCache::Lease::~Lease() {
  if (statement_ != nullptr) statement_->Reset();
  if (entry_ != nullptr) entry_->lent = false;
}

SqliteStatementCache::SqliteStatementCache(SqliteConnection& connection, std::size_t capacity)
    : connection_(connection), capacity_(capacity) {}

SqliteStatementCache::Lease SqliteStatementCache::Acquire(const SqlStatement& statement) {
  const std::string& text = statement.ParameterText();
  // A batch repeats one text many times over: then it comes first, and needs no look-up.
  if (!entries_.empty() && !entries_.front().lent && entries_.front().text == text) return Lease(entries_.front());
  const auto found = positions_.find(text);
  if (found != positions_.end() && !found->second->lent) {
    entries_.splice(entries_.begin(), entries_, found->second);
    return Lease(entries_.front());
  }
  auto prepared = std::make_unique<SqliteStatement>(connection_, statement);
  if (found != positions_.end() || !MakeRoom()) return Lease(std::move(prepared));
  entries_.push_front({text, std::move(prepared), false});
  positions_.emplace(entries_.front().text, entries_.begin());
  return Lease(entries_.front());
}

bool SqliteStatementCache::MakeRoom() {
  if (entries_.size() < capacity_) return true;
  const auto oldest = std::find_if(entries_.rbegin(), entries_.rend(), [](const Entry& entry) { return !entry.lent; });
  if (oldest == entries_.rend()) return false;
  positions_.erase(oldest->text);
  entries_.erase(std::next(oldest).base());
  return true;
}

}  // namespace tolvan

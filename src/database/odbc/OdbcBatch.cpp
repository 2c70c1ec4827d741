#include "database/odbc/OdbcBatch.h"

#include <algorithm>

namespace tolvan {
namespace {

bool IsQuery(const std::string& statement) {
  return statement.starts_with("SELECT ");
}

/// Whether a result is what "SELECT @@ROWCOUNT" after a statement gives.
bool IsCount(const BatchResult& result) {
  return result.rows && result.rows->FieldCount() == 1 && !result.rows->AtEnd();
}

BatchResult MissingResult() {
  return {{}, nullptr, HostError(HostErrorKind::Failed, "la base de datos no dio el resultado de la instrucción")};
}

/// Walks the results of SQL Server; one statement without rows gives any number of counts and errors, then its mark.
class ServerResults {
 public:
  explicit ServerResults(std::vector<BatchResult> results) : results_(std::move(results)) {}

  bool AtEnd() const { return next_ == results_.size(); }

  BatchResult OfQuery() {
    // A count can only be left over from before.
    while (!AtEnd() && results_[next_].affectedRows) ++next_;
    return AtEnd() ? MissingResult() : std::move(results_[next_++]);
  }

  BatchResult OfChange() {
    std::optional<HostError> error;
    for (; !AtEnd(); ++next_) {
      const BatchResult& result = results_[next_];
      if (result.error && !error) error = result.error;
      if (!IsCount(result)) continue;
      const std::int64_t count = IntegerOf(result.rows->Value(std::size_t{0})).value_or(0);
      ++next_;
      if (error) return {{}, nullptr, error};
      return {count, nullptr, {}};
    }
    if (error) return {{}, nullptr, error};
    return MissingResult();
  }

 private:
  std::vector<BatchResult> results_;
  std::size_t next_ = 0;
};

std::vector<BatchResult> AssignServerResults(std::span<const std::string> statements,
                                             std::vector<BatchResult> results) {
  ServerResults walk(std::move(results));
  std::vector<BatchResult> assigned;
  for (const std::string& statement : statements) {
    // After an error that ends the whole text nothing more comes, and nothing has run.
    if (walk.AtEnd() && !assigned.empty() && assigned.back().error) break;
    assigned.push_back(IsQuery(statement) ? walk.OfQuery() : walk.OfChange());
  }
  return assigned;
}

std::vector<BatchResult> AssignInOrder(std::span<const std::string> statements, std::vector<BatchResult> results) {
  std::vector<BatchResult> assigned;
  for (BatchResult& result : results) {
    if (assigned.size() == statements.size()) break;
    assigned.push_back(std::move(result));
    if (assigned.back().error) return assigned;
  }
  if (assigned.size() < statements.size()) assigned.push_back(MissingResult());
  return assigned;
}

}  // namespace

std::size_t StatementsTogether(BatchForm form, std::span<const std::string> statements, bool inTransaction) {
  // A text has to stay well below what servers take at once.
  constexpr std::size_t mostBytes = 4'000'000;
  if (form == BatchForm::OneByOne) return 1;
  if (form == BatchForm::Separated && !inTransaction && !std::ranges::all_of(statements, IsQuery)) return 1;
  std::size_t bytes = 0;
  std::size_t count = 0;
  for (; count < statements.size() && (count == 0 || bytes + statements[count].size() <= mostBytes); ++count) {
    bytes += statements[count].size();
  }
  return count;
}

std::string BatchText(BatchForm form, std::span<const std::string> statements) {
  // What goes alone needs nothing around it; its count comes by itself.
  std::string text;
  const bool counted = form == BatchForm::WithRowCounts;
  for (const std::string& statement : statements) {
    if (!text.empty()) text += counted ? "\n" : ";\n";
    text += statement;
    if (counted && !IsQuery(statement)) text += "\nSELECT @@ROWCOUNT";
  }
  return text;
}

std::vector<BatchResult> AssignResults(BatchForm form, std::span<const std::string> statements,
                                       std::vector<BatchResult> results) {
  if (form == BatchForm::WithRowCounts) return AssignServerResults(statements, std::move(results));
  return AssignInOrder(statements, std::move(results));
}

}  // namespace tolvan

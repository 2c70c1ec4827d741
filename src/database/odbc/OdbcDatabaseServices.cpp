#include "database/odbc/OdbcDatabaseServices.h"

#include <algorithm>

#include "database/odbc/OdbcBatch.h"
#include "database/sql/BufferedRecordset.h"

namespace tolvan {
namespace {

HostError WithContext(const HostError& error, const std::string& context) {
  return {error.Kind(), error.what(), context, error.NativeCode()};
}

/// Whether the statement fails again when it runs again, and does no harm by that.
bool CanBeProvokedAgain(const HostError& error) {
  return error.Kind() == HostErrorKind::Constraint || error.Kind() == HostErrorKind::Statement ||
         error.Kind() == HostErrorKind::Failed;
}

/// Whether nobody knows what the server did of the text that was sent.
bool LeavesUnknown(const HostError& error) {
  return error.Kind() == HostErrorKind::Unreachable || error.Kind() == HostErrorKind::Timeout ||
         error.Kind() == HostErrorKind::Interrupted;
}

/// The user sees the wait for the end of a transaction like any other, but does not stop it: what became of it would be
/// unknown.
class Unstoppable final : public Interruption {
 public:
  explicit Unstoppable(const Interruption* user) : user_(user) {}

  bool Requested() const noexcept override {
    if (user_ != nullptr) static_cast<void>(user_->Requested());  // which lets window events through
    return false;
  }
  void WaitBegins(std::string_view text) const noexcept override {
    if (user_ != nullptr) user_->WaitBegins(text);
  }
  void WaitEnds() const noexcept override {
    if (user_ != nullptr) user_->WaitEnds();
  }
  bool AnswerFor(std::chrono::milliseconds time) const noexcept override {
    return user_ != nullptr && user_->AnswerFor(time);
  }

 private:
  const Interruption* user_;
};

}  // namespace

class OdbcDatabaseServices::OpenTransaction final : public Transaction {
 public:
  explicit OpenTransaction(OdbcDatabaseServices& services) : services_(services) {}
  ~OpenTransaction() override { Rollback(); }
  OpenTransaction(const OpenTransaction&) = delete;
  OpenTransaction& operator=(const OpenTransaction&) = delete;

  void Commit() override {
    if (ended_) throw HostError(HostErrorKind::Statement, "la transacción ya terminó");
    ended_ = true;  // nothing stays open, whatever happens
    services_.Commit();
  }

  void Rollback() noexcept override {
    if (!ended_) services_.Rollback();
    ended_ = true;
  }

 private:
  OdbcDatabaseServices& services_;
  bool ended_ = false;
};

OdbcDatabaseServices::OdbcDatabaseServices(OdbcOptions options)
    : options_(std::move(options)), dialect_(*options_.dialect) {
  Connect();
}

OdbcDatabaseServices::~OdbcDatabaseServices() = default;

std::unique_ptr<Recordset> OdbcDatabaseServices::OpenRecordset(const SqlStatement& statement) {
  for (BatchResult& result : SendOne(statement)) {
    if (result.rows) return std::move(result.rows);
  }
  return std::make_unique<BufferedRecordset>(std::vector<std::string>(), std::vector<BufferedRecordset::Row>());
}

std::int64_t OdbcDatabaseServices::Execute(const SqlStatement& statement) {
  std::int64_t affected = 0;
  for (const BatchResult& result : SendOne(statement)) affected += result.affectedRows.value_or(0);
  return affected;
}

std::vector<BatchResult> OdbcDatabaseServices::SendOne(const SqlStatement& statement) {
  RequireUsable();
  std::string text;
  try {
    text = statement.Render(dialect_);
    std::vector<BatchResult> results = Send(text);
    const auto failed =
        std::ranges::find_if(results, [](const BatchResult& result) { return result.error.has_value(); });
    if (failed != results.end()) throw HostError(*failed->error);
    return results;
  } catch (const HostError& error) {
    const HostError complete = error.Context().empty() ? WithContext(error, text) : error;
    NoteFailure(complete);
    throw HostError(complete);
  }
}

std::vector<BatchResult> OdbcDatabaseServices::RunBatch(std::span<const SqlStatement> statements) {
  std::vector<BatchResult> results;
  results.reserve(statements.size());
  while (results.size() < statements.size()) {
    // What stands before a statement that cannot be written out is run first.
    std::vector<std::string> texts;
    std::optional<HostError> unwritable;
    for (const SqlStatement& statement : statements.subspan(results.size())) {
      try {
        texts.push_back(statement.Render(dialect_));
      } catch (const HostError& error) {
        unwritable = error;
        break;
      }
    }
    RunRendered(texts, results);
    if (!unwritable) continue;
    if (!failure_) NoteFailure(*unwritable);
    results.push_back({{}, nullptr, failure_ ? *failure_ : *unwritable});
  }
  return results;
}

std::vector<BatchResult> OdbcDatabaseServices::SendTogether(std::span<const std::string> texts) {
  const bool saved = Form() == BatchForm::Separated && inTransaction_ && texts.size() > 1;
  return saved ? SendSaved(texts) : AssignResults(Form(), texts, Send(BatchText(Form(), texts)));
}

/// When one of many statements fails, psqlODBC reports the error and not whose it is. So they are sent after a
/// savepoint, and after a failure once more from there, one by one, up to the one that fails.
std::vector<BatchResult> OdbcDatabaseServices::SendSaved(std::span<const std::string> texts) {
  std::vector<BatchResult> results =
      Send("SAVEPOINT tolvan;\n" + BatchText(Form(), texts) + ";\nRELEASE SAVEPOINT tolvan");
  const auto failed = std::ranges::find_if(results, [](const BatchResult& result) { return result.error.has_value(); });
  if (failed == results.end() && results.size() == texts.size() + 2) {
    results.erase(results.begin());
    return AssignResults(Form(), texts, std::move(results));
  }
  if (failed != results.end() && !CanBeProvokedAgain(*failed->error)) {
    std::vector<BatchResult> first;
    first.push_back(std::move(*failed));
    return first;
  }
  Send("ROLLBACK TO SAVEPOINT tolvan");
  std::vector<BatchResult> single;
  for (const std::string& text : texts) {
    single.push_back(std::move(AssignResults(Form(), {&text, 1}, Send(text)).front()));
    if (single.back().error) break;
  }
  return single;
}

void OdbcDatabaseServices::RunRendered(std::span<const std::string> texts, std::vector<BatchResult>& results) {
  while (!texts.empty()) {
    const std::span<const std::string> together = texts.first(StatementsTogether(Form(), texts, inTransaction_));
    std::vector<BatchResult> settled;
    try {
      RequireUsable();
      settled = SendTogether(together);
    } catch (const HostError& error) {
      settled.push_back({{}, nullptr, error});
    }
    if (const std::optional<HostError> last = settled.back().error; last && LeavesUnknown(*last)) {
      // The rest of the text may have run: it is not sent again.
      while (settled.size() < together.size()) settled.push_back({{}, nullptr, last});
    }
    for (std::size_t index = 0; index < settled.size(); ++index) {
      std::optional<HostError>& error = settled[index].error;
      if (failure_) {
        settled[index] = {{}, nullptr, *failure_};
      } else if (error) {
        if (error->Context().empty()) error = WithContext(*error, together[index]);
        NoteFailure(*error);
      }
      results.push_back(std::move(settled[index]));
    }
    texts = texts.subspan(settled.size());
  }
}

std::unique_ptr<Transaction> OdbcDatabaseServices::BeginTransaction() {
  if (inTransaction_) throw HostError(HostErrorKind::Statement, "ya hay una transacción abierta");
  RequireUsable();
  Control(&OdbcSession::Begin, options_.interruption);
  inTransaction_ = true;
  return std::make_unique<OpenTransaction>(*this);
}

void OdbcDatabaseServices::Connect() {
  auto worker = std::make_unique<OdbcWorker>(options_.grace);
  worker->Call<void>([options = options_](OdbcSession& session) { session.Open(options); }, options_.loginLimit,
                     options_.interruption);
  worker_ = std::move(worker);
}

void OdbcDatabaseServices::RequireUsable() {
  if (failure_) throw HostError(*failure_);
  if (!worker_) Connect();
}

std::vector<BatchResult> OdbcDatabaseServices::Send(const std::string& text) {
  return worker_->Call<std::vector<BatchResult>>([text](OdbcSession& session) { return session.Run(text); },
                                                 options_.statementLimit, options_.interruption);
}

void OdbcDatabaseServices::NoteFailure(const HostError& error) {
  if (inTransaction_ && !failure_) failure_ = error;
  if (worker_ && (worker_->IsLost() || error.Kind() == HostErrorKind::Unreachable)) worker_.reset();
}

void OdbcDatabaseServices::Control(void (OdbcSession::*work)(), const Interruption* interruption) {
  try {
    worker_->Call<void>([work](OdbcSession& session) { (session.*work)(); }, options_.statementLimit, interruption);
  } catch (const HostError&) {
    // Nobody knows what state the connection is in now.
    worker_.reset();
    throw;
  }
}

void OdbcDatabaseServices::Commit() {
  if (failure_) {
    const HostError failure = *failure_;
    Rollback();
    throw HostError(failure);
  }
  inTransaction_ = false;
  const Unstoppable interruption(options_.interruption);
  try {
    Control(&OdbcSession::Commit, &interruption);
  } catch (const HostError& error) {
    if (!LeavesUnknown(error)) throw;
    throw HostError(HostErrorKind::OutcomeUnknown, error.what(), error.Context(), error.NativeCode());
  }
}

void OdbcDatabaseServices::Rollback() noexcept {
  inTransaction_ = false;
  failure_.reset();
  if (!worker_) return;
  const Unstoppable interruption(options_.interruption);
  try {
    Control(&OdbcSession::Rollback, &interruption);
  } catch (const std::exception&) {
    worker_.reset();  // the server rolls back what a lost connection had begun
  }
}

}  // namespace tolvan

// Writes blocks of taxpayers to the customer table. A block is one transaction, or one statement where the engine takes
// many rows in one, its rows in the order of their codes, which an ordered table takes several times faster; what
// becomes of each line is as if they were written one by one in the order of the file. A block with a statement that
// fails is taken apart until the failing lines stand alone.
#pragma once

#include <cstddef>
#include <cstdint>
#include <map>
#include <optional>
#include <span>
#include <string>
#include <vector>

#include "fiscal/RegistryBlock.h"
#include "host/DatabaseServices.h"
#include "host/SqlStatement.h"
#include "host/UserInterface.h"

namespace tolvan {

/// The statement that puts a taxpayer on file unless its code is there already. The dialect writes its text once; for
/// every further row only the literals change, so that a row costs no memory of its own.
class CustomerStatement {
 public:
  /// `active` is the value of Activo in every row. `dialect` must outlive the object.
  CustomerStatement(const SqlDialect& dialect, bool active);

  /// A statement to be filled.
  const SqlStatement& Blank() const { return blank_; }

  /// Makes `statement`, a copy of Blank, the one of this row.
  void Fill(SqlStatement& statement, const CustomerRow& row) const;

  /// Whether the engine has a statement for many rows.
  bool HasStatementForMany() const { return hasStatementForMany_; }

  /// That statement; it returns the codes of the new customers. At least one row, no code twice.
  SqlStatement ForMany(std::span<const CustomerRow> rows) const;

 private:
  std::optional<SqlStatement> TryForMany(std::span<const CustomerRow> rows) const;

  const SqlDialect* dialect_;
  bool active_;
  bool hasStatementForMany_ = false;
  SqlStatement blank_;
  std::vector<std::size_t> codePlaces_;
  std::vector<std::size_t> namePlaces_;
  std::vector<std::size_t> personeriaPlaces_;
};

/// Whether a failure is that of one statement, so that the next one may do better; otherwise it is the database that
/// fails (locked, full, gone), and going on would only count good lines as bad.
bool IsFailureOfStatement(const HostError& error);

class RegistryBlockWriter {
 public:
  /// The references must outlive the writer. `active` is the value of Activo.
  RegistryBlockWriter(DatabaseServices& database, const SqlDialect& dialect, const Interruption& interruption,
                      bool active);

  /// Writes the pending lines and sets their outcome. Returns the failure of the database, or the interruption, that
  /// kept the lines that are still pending from being written; every other line is kept for good.
  std::optional<HostError> Write(RegistryBlock& block);

  /// The database's message for a line that Write rejected.
  const std::string& MessageFor(std::uint32_t place) const { return messages_.at(place); }

 private:
  using Places = std::span<const std::uint32_t>;

  /// False when a statement fails; then nothing of it is kept. Throws HostError when the database fails.
  bool TryTogether(Places places);
  bool RunInChunks(Places places);
  bool RunChunk(Places places);
  bool RunAsOne(Places places);
  void TakeApart(Places places);
  void WriteAlone(std::uint32_t place);
  void Settle(Places places);

  DatabaseServices& database_;
  const Interruption& interruption_;
  CustomerStatement statement_;
  std::vector<SqlStatement> statements_;
  RegistryBlock* block_ = nullptr;
  std::vector<bool> inserted_;  // of the places given to TryTogether
  std::map<std::uint32_t, std::string> messages_;
};

}  // namespace tolvan

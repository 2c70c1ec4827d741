// Writes batches of taxpayers to the customer table. A batch is one transaction, or one statement where the engine
// takes many rows in one, its rows in the order of their codes, which an ordered table takes several times faster; what
// becomes of each line is as if they were written one by one in the order of the file. A batch with a statement that
// fails is taken apart until the failing lines stand alone.
#pragma once

#include <cstdint>
#include <map>
#include <optional>
#include <span>
#include <string>
#include <vector>

#include "fiscal/RegistryBatch.h"
#include "host/DatabaseServices.h"
#include "host/UserInterface.h"

namespace tolvan {

/// Whether a failure is that of one statement, so that the next one may do better; otherwise it is the database that
/// fails (locked, full, gone), and going on would only count good lines as bad.
bool IsFailureOfStatement(const HostError& error);

class RegistryBatchWriter {
 public:
  /// The references must outlive the writer. `active` is the value of Activo.
  RegistryBatchWriter(DatabaseServices& database, const SqlDialect& dialect, const Interruption& interruption,
                      bool active);

  /// Writes the pending lines and sets their outcome. Returns the failure of the database, or the interruption, that
  /// kept the lines that are still pending from being written; every other line is kept for good.
  std::optional<HostError> Write(RegistryBatch& batch);

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
  RegistryBatch* batch_ = nullptr;
  std::vector<bool> inserted_;  // of the places given to TryTogether
  std::map<std::uint32_t, std::string> messages_;
};

}  // namespace tolvan

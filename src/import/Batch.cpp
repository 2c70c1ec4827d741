#include "import/Batch.h"

namespace tolvan {

std::vector<BatchResult> RunWhole(DatabaseServices& database, std::span<const SqlStatement> statements) {
  if (statements.empty()) return {};
  std::vector<BatchResult> results = database.RunBatch(statements);
  for (std::size_t index = 0; index < results.size(); ++index) {
    if (results[index].error) throw BatchFailure(*results[index].error, index);
  }
  return results;
}

}  // namespace tolvan

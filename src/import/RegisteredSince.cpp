#include "import/RegisteredSince.h"

#include <algorithm>

#include "import/Batch.h"
#include "import/ItemQueries.h"
#include "import/StoreTables.h"

namespace tolvan {
namespace {

constexpr std::size_t mostNamed = 10;

std::vector<std::string> Registered(DatabaseServices& database, std::span<const std::string> codes) {
  const StoredCodes stored = StoredCodes::OfItems(database);
  std::vector<std::string> found;
  for (std::size_t begin = 0; begin < codes.size(); begin += rowsPerBatch) {
    const std::span<const std::string> block = codes.subspan(begin, std::min(rowsPerBatch, codes.size() - begin));
    std::vector<SqlStatement> statements;
    for (const std::string& code : block) statements.push_back(CodeExistsStatement(stored.SpellingOf(code)));
    const std::vector<BatchResult> answers = RunWhole(database, statements);
    for (std::size_t index = 0; index < block.size(); ++index) {
      if (FoundRows(answers[index])) found.push_back(block[index]);
    }
  }
  return found;
}

}  // namespace

std::string RegisteredSince(DatabaseServices& database, std::span<const std::string> codes) {
  std::vector<std::string> found;
  try {
    found = Registered(database, codes);
  } catch (const HostError&) {
    return {};  // the failure that led here is the one to tell
  }
  if (found.empty()) return {};
  std::string names;
  for (std::size_t index = 0; index < std::min(found.size(), mostNamed); ++index) {
    names += (index == 0 ? "" : ", ") + found[index];
  }
  if (found.size() > mostNamed) names += " y " + std::to_string(found.size() - mostNamed) + " más";
  return "Otro programa registró mientras tanto: " + names +
         ". No se aplicó nada; repita la importación, que los tomará como Items ya registrados.";
}

}  // namespace tolvan

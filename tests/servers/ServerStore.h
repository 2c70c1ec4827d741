// A store on the tests' PostgreSQL server, and imports into it over whatever connection a test gives.
#pragma once

#include <functional>
#include <string>
#include <vector>

#include "import/clsIE_PreciosExcel.h"
#include "support/ImportRig.h"
#include "support/PostgresServer.h"
#include "support/RegistryRun.h"

namespace tolvan::test {

class ServerStore : public ImportRig {
 public:
  explicit ServerStore(PostgresServer& home = PostgresServer::Shared());

  /// Items V1, V2, … with unit CAJA beside their principal one, which cost 10 and have neither price nor cost yet for
  /// inventory 1.
  void AddItems(int count) const;

  /// The first field of the first row, as the administrator sees it.
  std::string Ask(const std::string& query) const { return server.Psql(name, query); }

  /// Rows of a template workbook: updates of the items V1 to V`count`, and as many new items.
  static std::vector<GivenRow> TemplateRows(int count);

  /// Reads and classifies the rows; `review` stands for the user. What came of it.
  ImportOutcome ImportTemplate(DatabaseServices& database, std::vector<GivenRow> rows,
                               const std::function<void(IClaseImportar&)>& review);

  PostgresServer& server;
  std::string name = server.MakeDatabase();
  std::string connection = server.ConnectionString(name);
};

}  // namespace tolvan::test

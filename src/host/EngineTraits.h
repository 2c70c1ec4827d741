// What sets a database engine apart beyond its SQL text. Nobody asks which engine it is: whoever needs to know
// something asks for that something here. Every dialect carries the traits of its engine.
#pragma once

#include <cstddef>
#include <string_view>

namespace tolvan {

/// How several statements travel to an engine in one call.
enum class BatchForm {
  OneByOne,       ///< an engine that takes one statement at a time
  Separated,      ///< in one text, separated by semicolons: queries always, changes only inside a transaction
  WithRowCounts,  ///< in one text, each change followed by a query for the number of rows that it affected
};

struct EngineTraits {
  std::string_view name{};    ///< as `motor` in tolvan.ini, in lower case
  std::string_view schema{};  ///< the script that creates the tables
  bool isFile = false;        ///< the database is a file of this machine, opened in this process

  BatchForm batchForm = BatchForm::OneByOne;
  std::size_t statementsPerCall = 2'000;   ///< a call is a round trip; a file engine's stay in the processor's cache
  std::size_t rowsPerTransaction = 4'000;  ///< others work on a server too; large ones keep a file's pages hot
  bool smallIntegersAreBooleans = false;   ///< the schema declares its booleans SMALLINT, and nothing else
  /// To be appended to the ODBC connection string; each option ends in ";".
  std::string_view driverOptions{};
  /// Limits the time of statements, with "?" for the seconds; run once for each connection. Empty: the driver's own
  /// way.
  std::string_view statementLimitSetting{};
};

}  // namespace tolvan

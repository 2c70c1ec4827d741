// How an engine takes several statements in one text, and which of the results that come back is whose.
//
// PostgreSQL runs a text of many statements as one transaction and stops at the first error; so many statements travel
// together where that is what is wanted: in a transaction, or when they only read. SQL Server goes on after an error,
// and a statement under an IF may give no count at all; "SELECT @@ROWCOUNT" after each statement that returns no rows
// gives its count and marks where its results end. Access takes one statement at a time.
#pragma once

#include <span>
#include <string>
#include <vector>

#include "host/DatabaseServices.h"
#include "host/SqlStatement.h"

namespace tolvan {

/// How many of the statements, from the first, go into the next text: at least one.
std::size_t StatementsTogether(BatchForm form, std::span<const std::string> statements, bool inTransaction);

/// The text of statements that go together.
std::string BatchText(BatchForm form, std::span<const std::string> statements);

/// Gives each statement what came back for it, from the first on: at least one, fewer than `statements` when the text
/// ended early. The last of them then has the error.
std::vector<BatchResult> AssignResults(BatchForm form, std::span<const std::string> statements,
                                       std::vector<BatchResult> results);

}  // namespace tolvan

#include "database/sql/SqlScript.h"

namespace tolvan {
namespace {

/// Where the comment or quoted text that begins at `start` ends; `start` itself when none begins there.
std::size_t EndOfSpan(std::string_view script, std::size_t start, std::string_view begin, std::string_view end) {
  if (script.substr(start, begin.size()) != begin) return start;
  const std::size_t found = script.find(end, start + begin.size());
  return found == std::string_view::npos ? script.size() : found + end.size();
}

std::size_t EndOfComment(std::string_view script, std::size_t start) {
  const std::size_t lineEnd = EndOfSpan(script, start, "--", "\n");
  return lineEnd != start ? lineEnd : EndOfSpan(script, start, "/*", "*/");
}

std::size_t EndOfQuoted(std::string_view script, std::size_t start) {
  switch (script[start]) {
    case '\'':
      return EndOfSpan(script, start, "'", "'");  // a doubled apostrophe reads as two quoted texts side by side
    case '"':
      return EndOfSpan(script, start, "\"", "\"");
    case '[':
      return EndOfSpan(script, start, "[", "]");
    default:
      return start + 1;
  }
}

void Keep(std::vector<std::string>& statements, std::string& statement) {
  constexpr std::string_view space = " \t\r\n";
  const std::size_t first = statement.find_first_not_of(space);
  if (first != std::string::npos) {
    statements.push_back(statement.substr(first, statement.find_last_not_of(space) + 1 - first));
  }
  statement.clear();
}

}  // namespace

std::vector<std::string> SplitSqlScript(std::string_view script) {
  std::vector<std::string> statements;
  std::string statement;
  for (std::size_t position = 0; position < script.size();) {
    const std::size_t afterComment = EndOfComment(script, position);
    if (afterComment != position) {
      statement += '\n';
      position = afterComment;
    } else if (script[position] == ';') {
      Keep(statements, statement);
      ++position;
    } else {
      const std::size_t end = EndOfQuoted(script, position);
      statement.append(script, position, end - position);
      position = end;
    }
  }
  Keep(statements, statement);
  return statements;
}

void RunSqlScript(DatabaseServices& database, std::string_view script) {
  const auto transaction = database.BeginTransaction();
  for (const std::string& statement : SplitSqlScript(script)) database.Execute(SqlStatement(statement));
  transaction->Commit();
}

}  // namespace tolvan

#include "host/SqlStatement.h"
namespace tolvan {
namespace {

// Room for most statements at once: imports make hundreds of thousands of them.
constexpr std::size_t usualText = 240;
constexpr std::size_t usualLiterals = 8;

}  // namespace

SqlStatement& SqlStatement::Sql(std::string_view fixedText) {
  if (parameterText_.empty()) parameterText_.reserve(usualText);
  parameterText_ += fixedText;
  return *this;
}

SqlStatement& SqlStatement::Literal(SqlLiteral value) {
  if (literals_.empty()) {
    literals_.reserve(usualLiterals);
    positions_.reserve(usualLiterals);
  }
  positions_.push_back(parameterText_.size());
  parameterText_ += '?';
  literals_.push_back(std::move(value));
  return *this;
}

SqlStatement& SqlStatement::Append(const SqlStatement& other) {
  if (&other == this) return Append(SqlStatement(other));
  for (const std::size_t position : other.positions_) positions_.push_back(parameterText_.size() + position);
  parameterText_ += other.parameterText_;
  literals_.insert(literals_.end(), other.literals_.begin(), other.literals_.end());
  return *this;
}

void SqlStatement::ReplaceText(std::size_t index, std::string_view value) {
  if (auto* text = std::get_if<std::string>(&literals_[index])) {
    text->assign(value);
  } else {
    literals_[index] = std::string(value);
  }
}

std::string SqlStatement::Render(const SqlDialect& dialect) const {
  std::string text;
  std::size_t start = 0;
  for (std::size_t index = 0; index < literals_.size(); ++index) {
    text.append(parameterText_, start, positions_[index] - start);
    text += dialect.Literal(literals_[index]);
    start = positions_[index] + 1;
  }
  return text.append(parameterText_, start);
}

}  // namespace tolvan

#include "platform/odbc/OdbcErrors.h"

#include <sql.h>
#include <sqlext.h>
#include <sqlucode.h>

#include <algorithm>
#include <array>

#include "platform/odbc/OdbcText.h"

namespace tolvan {
namespace {

struct StateRule {
  std::string_view prefix;
  HostErrorKind kind;
};

// The first that fits counts.
constexpr StateRule stateRules[] = {
    {"08", HostErrorKind::Unreachable},   {"23", HostErrorKind::Constraint},    {"44", HostErrorKind::Constraint},
    {"22001", HostErrorKind::Constraint}, {"22003", HostErrorKind::Constraint}, {"25006", HostErrorKind::Access},
    {"28", HostErrorKind::Access},        {"42501", HostErrorKind::Access},     {"3D", HostErrorKind::Unreachable},
    {"40", HostErrorKind::Busy},          {"55P03", HostErrorKind::Busy},       {"55006", HostErrorKind::Busy},
    {"53100", HostErrorKind::Full},       {"53", HostErrorKind::Unreachable},   {"57014", HostErrorKind::Timeout},
    {"57", HostErrorKind::Unreachable},   {"HYT", HostErrorKind::Timeout},      {"HY008", HostErrorKind::Interrupted},
    {"IM", HostErrorKind::Configuration}, {"XX001", HostErrorKind::Damaged},    {"XX002", HostErrorKind::Damaged},
    {"22", HostErrorKind::Statement},     {"42", HostErrorKind::Statement},     {"21", HostErrorKind::Statement},
    {"25", HostErrorKind::Statement},     {"07", HostErrorKind::Statement},     {"37", HostErrorKind::Statement},
    {"S0", HostErrorKind::Statement},
};

struct NativeRule {
  std::int64_t code;
  HostErrorKind kind;
};

// SQL Server's numbers whose states say less.
constexpr NativeRule serverRules[] = {
    {229, HostErrorKind::Access},       {230, HostErrorKind::Access},      {262, HostErrorKind::Access},
    {1101, HostErrorKind::Full},        {1105, HostErrorKind::Full},       {9002, HostErrorKind::Full},
    {1205, HostErrorKind::Busy},        {1222, HostErrorKind::Busy},       {2601, HostErrorKind::Constraint},
    {2627, HostErrorKind::Constraint},  {547, HostErrorKind::Constraint},  {515, HostErrorKind::Constraint},
    {8152, HostErrorKind::Constraint},  {2628, HostErrorKind::Constraint}, {18456, HostErrorKind::Access},
    {4060, HostErrorKind::Unreachable},
};

}  // namespace

HostErrorKind KindOfSqlState(std::string_view state, std::int64_t nativeCode) {
  const auto* const native = std::ranges::find(serverRules, nativeCode, &NativeRule::code);
  if (native != std::end(serverRules)) return native->kind;
  // FreeTDS tells of its own troubles, such as an answer that broke off, by these numbers and a state for warnings.
  if (state == "01000" && nativeCode >= 20'000 && nativeCode < 20'100) return HostErrorKind::Unreachable;
  const auto* const rule =
      std::ranges::find_if(stateRules, [&](const StateRule& each) { return state.starts_with(each.prefix); });
  return rule == std::end(stateRules) ? HostErrorKind::Failed : rule->kind;
}

HostError MakeOdbcError(short type, void* handle) {
  std::array<SQLWCHAR, 6> state{};
  std::array<SQLWCHAR, 2048> message{};
  SQLINTEGER native = 0;
  SQLSMALLINT length = 0;
  const SQLRETURN code = SQLGetDiagRecW(type, handle, 1, state.data(), &native, message.data(),
                                        static_cast<SQLSMALLINT>(message.size()), &length);
  if (!SQL_SUCCEEDED(code)) return {HostErrorKind::Failed, "el controlador ODBC no dio la causa"};
  const std::string stateText = NarrowText(std::u16string(state.begin(), state.begin() + 5));
  const auto used = std::min<std::ptrdiff_t>(std::max<std::ptrdiff_t>(length, 0), std::ssize(message) - 1);
  const std::string text = NarrowText(std::u16string(message.begin(), message.begin() + used));
  return {KindOfSqlState(stateText, native), "[" + stateText + "] " + text, {}, native == 0 ? -1 : native};
}

}  // namespace tolvan

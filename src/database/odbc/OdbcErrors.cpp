#include "database/odbc/OdbcErrors.h"

#include <sql.h>
#include <sqlext.h>
#include <sqlucode.h>

#include <algorithm>
#include <array>

#include "base/Text.h"

namespace tolvan {
namespace {

struct StateRule {
  std::string_view prefix;
  HostErrorKind kind;
};

// The first that fits counts.
constexpr std::array stateRules{
    StateRule{"08", HostErrorKind::Unreachable},    StateRule{"23", HostErrorKind::Constraint},
    StateRule{"44", HostErrorKind::Constraint},     StateRule{"22001", HostErrorKind::Constraint},
    StateRule{"22003", HostErrorKind::Constraint},  StateRule{"25006", HostErrorKind::Access},
    StateRule{"28", HostErrorKind::Access},         StateRule{"42501", HostErrorKind::Access},
    StateRule{"3D", HostErrorKind::Unreachable},    StateRule{"40", HostErrorKind::Busy},
    StateRule{"55P03", HostErrorKind::Busy},        StateRule{"55006", HostErrorKind::Busy},
    StateRule{"53100", HostErrorKind::Full},        StateRule{"53", HostErrorKind::Unreachable},
    StateRule{"58", HostErrorKind::Unreachable},    StateRule{"57014", HostErrorKind::Timeout},
    StateRule{"57", HostErrorKind::Unreachable},    StateRule{"HYT", HostErrorKind::Timeout},
    StateRule{"HY008", HostErrorKind::Interrupted}, StateRule{"IM", HostErrorKind::Configuration},
    StateRule{"XX001", HostErrorKind::Damaged},     StateRule{"XX002", HostErrorKind::Damaged},
    StateRule{"22", HostErrorKind::Statement},      StateRule{"42", HostErrorKind::Statement},
    StateRule{"21", HostErrorKind::Statement},      StateRule{"25", HostErrorKind::Statement},
    StateRule{"07", HostErrorKind::Statement},      StateRule{"37", HostErrorKind::Statement},
    StateRule{"S0", HostErrorKind::Statement},
};

struct NativeRule {
  std::int64_t code;
  HostErrorKind kind;
};

// SQL Server's numbers whose states say less.
constexpr std::array serverRules{
    NativeRule{229, HostErrorKind::Access},      NativeRule{230, HostErrorKind::Access},
    NativeRule{262, HostErrorKind::Access},      NativeRule{1101, HostErrorKind::Full},
    NativeRule{1105, HostErrorKind::Full},       NativeRule{9002, HostErrorKind::Full},
    NativeRule{1205, HostErrorKind::Busy},       NativeRule{1222, HostErrorKind::Busy},
    NativeRule{2601, HostErrorKind::Constraint}, NativeRule{2627, HostErrorKind::Constraint},
    NativeRule{547, HostErrorKind::Constraint},  NativeRule{515, HostErrorKind::Constraint},
    NativeRule{8152, HostErrorKind::Constraint}, NativeRule{2628, HostErrorKind::Constraint},
    NativeRule{18456, HostErrorKind::Access},    NativeRule{4060, HostErrorKind::Unreachable},
    NativeRule{823, HostErrorKind::Unreachable}, NativeRule{824, HostErrorKind::Damaged},
};

struct StateReason {
  std::string_view prefix;
  std::string_view text;
};

// The states that say all there is to say. For the others the driver's own words are shown too.
constexpr std::array stateReasons{
    StateReason{"23505", "ya hay un registro con esa clave"},
    StateReason{"23503", "el registro nombra a otro que no existe, o es nombrado por otros"},
    StateReason{"23502", "falta un dato obligatorio"},
    StateReason{"23514", "un dato no cumple una condición de la tabla"},
    StateReason{"22001", "un texto es demasiado largo para su columna"},
    StateReason{"22003", "un número no cabe en su columna"},
    StateReason{"40", "el servidor deshizo la transacción porque chocaba con la de otro programa"},
    StateReason{"55P03", "otro programa tiene bloqueado el registro"},
    StateReason{"53100", "el disco del servidor está lleno"},
    StateReason{"53300", "el servidor no admite más conexiones"},
    StateReason{"57014", "el servidor detuvo la instrucción"},
    StateReason{"58030", "el servidor no pudo leer o escribir en su disco"},
    StateReason{"08S01", "se cortó la conexión con el servidor"},
    StateReason{"08003", "la conexión con el servidor está cerrada"},
    StateReason{"08007", "se cortó la conexión durante la transacción"},
    StateReason{"HYT00", "el servidor no respondió a tiempo"},
    StateReason{"HYT01", "el servidor no respondió a tiempo"},
    StateReason{"HY001", "memoria insuficiente"},
    StateReason{"HY008", "la operación fue detenida"},
    StateReason{"25006", "la base de datos es de solo lectura"},
    StateReason{"42501", "el usuario de la base de datos no tiene permiso"},
};

struct NativeReason {
  std::int64_t code;
  std::string_view text;
};

// SQL Server's, whose states are the same for many failures.
constexpr std::array serverReasons{
    NativeReason{2601, "ya hay un registro con esa clave"},
    NativeReason{2627, "ya hay un registro con esa clave"},
    NativeReason{515, "falta un dato obligatorio"},
    NativeReason{1105, "el disco del servidor está lleno"},
    NativeReason{9002, "el registro de transacciones del servidor está lleno"},
    NativeReason{1205, "el servidor deshizo la transacción porque chocaba con la de otro programa"},
    NativeReason{1222, "otro programa tiene bloqueado el registro"},
    NativeReason{823, "el servidor no pudo leer o escribir en su disco"},
    NativeReason{824, "una página de la base de datos no es lo que se escribió en ella"},
};

/// Empty when neither says enough.
std::string_view ReasonOf(std::string_view state, std::int64_t nativeCode) {
  const auto native = std::ranges::find(serverReasons, nativeCode, &NativeReason::code);
  if (native != serverReasons.end()) return native->text;
  const auto rule =
      std::ranges::find_if(stateReasons, [&](const StateReason& each) { return state.starts_with(each.prefix); });
  return rule == stateReasons.end() ? std::string_view() : rule->text;
}

constexpr char16_t replacement = 0xFFFD;

/// Also what NextCodePoint gives for a byte that begins no character.
bool IsSurrogate(char32_t character) {
  return character >= 0xD800 && character < 0xE000;
}

}  // namespace

std::u16string WideText(std::string_view utf8) {
  std::u16string wide;
  wide.reserve(utf8.size());
  for (std::size_t position = 0; position < utf8.size();) {
    const char32_t character = NextCodePoint(utf8, position);
    if (character >= 0x10000) {
      const char32_t offset = character - 0x10000;
      wide += static_cast<char16_t>(0xD800U + (offset >> 10U));
      wide += static_cast<char16_t>(0xDC00U + (offset & 0x3FFU));
    } else {
      wide += IsSurrogate(character) ? replacement : static_cast<char16_t>(character);
    }
  }
  return wide;
}

std::string NarrowText(std::u16string_view wide) {
  std::string text;
  text.reserve(wide.size());
  for (std::size_t index = 0; index < wide.size(); ++index) {
    const char16_t unit = wide[index];
    const bool high = unit >= 0xD800 && unit < 0xDC00;
    const bool pair = high && index + 1 < wide.size() && wide[index + 1] >= 0xDC00 && wide[index + 1] < 0xE000;
    if (pair) {
      const char32_t top = static_cast<char32_t>(unit - 0xD800) << 10U;
      AppendCodePoint(text, 0x10000U + top + (wide[++index] - 0xDC00U));
    } else {
      AppendCodePoint(text, unit);
    }
  }
  return text;
}

HostErrorKind KindOfSqlState(std::string_view state, std::int64_t nativeCode) {
  const auto native = std::ranges::find(serverRules, nativeCode, &NativeRule::code);
  if (native != serverRules.end()) return native->kind;
  // FreeTDS reports its own troubles, such as an answer that broke off, by these numbers and a state for warnings.
  if (state == "01000" && nativeCode >= 20'000 && nativeCode < 20'100) return HostErrorKind::Unreachable;
  const auto rule =
      std::ranges::find_if(stateRules, [&](const StateRule& each) { return state.starts_with(each.prefix); });
  return rule == stateRules.end() ? HostErrorKind::Failed : rule->kind;
}

std::string OdbcText(std::string_view state, std::int64_t nativeCode, const std::string& message) {
  const std::string_view reason = ReasonOf(state, nativeCode);
  const std::string text = reason.empty() ? "el controlador o el servidor dice «" + message + "»" : std::string(reason);
  return "[" + std::string(state) + "] " + text;
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
  return {KindOfSqlState(stateText, native), OdbcText(stateText, native, text), {}, native == 0 ? -1 : native};
}

}  // namespace tolvan

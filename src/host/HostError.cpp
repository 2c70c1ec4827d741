#include "host/HostError.h"

#include "base/Text.h"

namespace tolvan {
namespace {

const char* TextOf(HostErrorKind kind) {
  switch (kind) {
    case HostErrorKind::Configuration:
      return "Error en la configuración";
    case HostErrorKind::Unreachable:
      return "No se puede acceder";
    case HostErrorKind::Busy:
      return "Ocupado por otro programa";
    case HostErrorKind::Damaged:
      return "El contenido está dañado";
    case HostErrorKind::Constraint:
      return "La base de datos rechazó el registro";
    case HostErrorKind::Statement:
      return "La base de datos rechazó la instrucción";
    case HostErrorKind::Full:
      return "No queda espacio disponible";
    case HostErrorKind::Access:
      return "Acceso denegado";
    case HostErrorKind::Timeout:
      return "No hubo respuesta a tiempo";
    case HostErrorKind::Interrupted:
      return "Operación interrumpida";
    case HostErrorKind::InvalidValue:
      return "Valor no admitido";
    case HostErrorKind::OutcomeUnknown:
      return "No se sabe si los cambios quedaron guardados; revíselo antes de repetir la operación";
    case HostErrorKind::Failed:
      break;
  }
  return "Error";
}

/// A statement may be as long as a file.
std::string Shortened(const std::string& context) {
  constexpr std::size_t mostCharacters = 1'000;
  const std::string_view shown = FirstCharacters(context, mostCharacters);
  return std::string(shown) + (shown.size() < context.size() ? "…" : "");
}

}  // namespace

std::string TextForPeople(const HostError& error) {
  std::string text = TextOf(error.Kind());
  if (error.what()[0] != '\0') text.append(": ").append(error.what());
  if (error.NativeCode() != 0) text.append(" (código ").append(std::to_string(error.NativeCode())).append(")");
  if (!error.Context().empty()) text.append("\r\n").append(Shortened(error.Context()));
  return text;
}

}  // namespace tolvan

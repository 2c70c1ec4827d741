#include "system/posix/SystemFailure.h"

#include <array>
#include <cerrno>

namespace tolvan {
namespace {

struct Meaning {
  int number;
  HostErrorKind kind;
  const char* text;
};

constexpr std::array meanings{
    Meaning{ENOSPC, HostErrorKind::Full, "el disco está lleno"},
    Meaning{EDQUOT, HostErrorKind::Full, "se agotó la cuota de disco del usuario"},
    Meaning{EFBIG, HostErrorKind::Full, "el archivo supera el tamaño permitido"},
    Meaning{EACCES, HostErrorKind::Access, "no tiene permiso"},
    Meaning{EPERM, HostErrorKind::Access, "el sistema no permite la operación"},
    Meaning{EROFS, HostErrorKind::Access, "la unidad es de solo lectura"},
    Meaning{ENOENT, HostErrorKind::Unreachable, "no existe el archivo o la carpeta"},
    Meaning{ENOTDIR, HostErrorKind::Unreachable, "una parte de la ruta no es una carpeta"},
    Meaning{EISDIR, HostErrorKind::Unreachable, "la ruta es una carpeta, no un archivo"},
    Meaning{ELOOP, HostErrorKind::Unreachable, "la ruta da vueltas por enlaces simbólicos"},
    Meaning{ENAMETOOLONG, HostErrorKind::Unreachable, "el nombre es demasiado largo"},
    Meaning{ENODEV, HostErrorKind::Unreachable, "la unidad no está disponible"},
    Meaning{ENXIO, HostErrorKind::Unreachable, "la unidad no está disponible"},
    Meaning{ESTALE, HostErrorKind::Unreachable, "se perdió la conexión con la carpeta de red"},
    Meaning{EAGAIN, HostErrorKind::Busy, "otro programa lo está usando"},
    Meaning{EBUSY, HostErrorKind::Busy, "otro programa lo está usando"},
    Meaning{ETXTBSY, HostErrorKind::Busy, "otro programa lo está usando"},
    Meaning{EIO, HostErrorKind::Failed, "la unidad no pudo leer o escribir los datos"},
    Meaning{EINTR, HostErrorKind::Interrupted, "se pidió terminar"},
    Meaning{EBADF, HostErrorKind::Failed, "no está abierto"},
    Meaning{EMFILE, HostErrorKind::Failed, "hay demasiados archivos abiertos"},
    Meaning{ENFILE, HostErrorKind::Failed, "hay demasiados archivos abiertos"},
    Meaning{ENOMEM, HostErrorKind::Failed, "memoria insuficiente"},
};

}  // namespace

HostError SystemFailure(int errorNumber, std::string_view path) {
  for (const Meaning& meaning : meanings) {
    if (meaning.number == errorNumber) return {meaning.kind, meaning.text, std::string(path), errorNumber};
  }
  return {HostErrorKind::Failed, "el sistema no pudo hacer la operación", std::string(path), errorNumber};
}

}  // namespace tolvan

// Codes in another casing. The engines compare the codes of items, brands and departments without regard to case, but
// SQLite does so for ASCII letters only, and its order of keys cannot be changed without harm to the other programs
// that write the same file. So the codes that it would miss are looked for here; see docs/importacion.md.
#pragma once

#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "host/DatabaseServices.h"

namespace tolvan {

class StoredCodes {
 public:
  /// No codes: every one is its own spelling.
  StoredCodes() = default;

  /// Reads a column of codes where the engine needs it. Throw HostError.
  static StoredCodes OfItems(DatabaseServices& database) { return Load(database, "Items", "idItem"); }
  static StoredCodes OfBrands(DatabaseServices& database) { return Load(database, "Marcas", "idMarca"); }

  static StoredCodes OfDepartments(DatabaseServices& database) {
    return Load(database, "Departamentos", "idDepartamento");
  }

  /// The code to ask the engine for: the stored one that is `code` in another casing, or else `code` itself. It points
  /// into `code` or this object.
  std::string_view SpellingOf(std::string_view code) const;

 private:
  static StoredCodes Load(DatabaseServices& database, std::string_view table, std::string_view column);

  std::unordered_map<std::string, std::vector<std::string>> byUpperCase_;  // those with letters beyond ASCII
};

}  // namespace tolvan

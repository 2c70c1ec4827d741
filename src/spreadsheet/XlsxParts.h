// How the parts of an .xlsx are found and read: relationships lead from the package to the workbook and from there to
// its sheets, shared strings and styles, wherever they lie.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "host/UserInterface.h"
#include "spreadsheet/XmlStream.h"
#include "spreadsheet/ZipPackage.h"

namespace tolvan {

/// Reads a whole part. Throws HostError Damaged or Interrupted and what the handler throws.
void ReadPart(const ZipPackage& package, const std::string& name, std::uint64_t limit, XmlHandler& handler,
              const Interruption& interruption);

struct Relationship {
  std::string id;
  std::string type;    ///< the last piece of the type's address, the same in transitional and strict workbooks
  std::string target;  ///< the part's name
};

/// The relationships of a part inside the package (the package's own for an empty name), in their order; none when the
/// part has none.
std::vector<Relationship> ReadRelationships(const ZipPackage& package, const std::string& partName,
                                            const Interruption& interruption);

/// The part that a target means, seen from the part that refers to it: "../a.xml" from "x/y/b.xml" is "x/a.xml",
/// "/a.xml" is "a.xml".
std::string ResolveTarget(std::string_view partName, std::string_view target);

/// What the workbook part tells.
struct XlsxWorkbook {
  std::string sheetPart;    ///< the first worksheet in tab order
  std::string stringsPart;  ///< empty when there is none
  std::string stylesPart;   ///< empty when there is none
  bool from1904 = false;
};

/// Throws HostError Damaged when the package holds no workbook or that has no worksheet.
XlsxWorkbook ReadWorkbookPart(const ZipPackage& package, const Interruption& interruption);

}  // namespace tolvan

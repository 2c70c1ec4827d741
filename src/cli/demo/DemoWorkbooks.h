// The workbooks of the demo store: the template, and price lists of its suppliers to try the imports on.
#pragma once

#include "base/Calendar.h"
#include "cli/demo/DemoStore.h"

namespace tolvan {

/// Writes the template into the application folder, and the examples "precios.xlsx", "precios.xls" and "movilnet.xlsx".
/// `today` becomes their date of creation. "precios.xls" holds the rows of "precios.xlsx", made by tools/make-examples
/// and kept among the data, because the component writes no such file. Throws HostError.
void WriteDemoWorkbooks(const DemoPlaces& places, Date today);

}  // namespace tolvan

// The demo store: a folder with a configuration, a database, the template, and files to try the commands on.
#pragma once

#include <functional>
#include <string>
#include <string_view>

#include "base/Calendar.h"
#include "host/DatabaseServices.h"

namespace tolvan {

struct DemoPlaces {
  std::string folder;  ///< absolute
  std::string host;    ///< its tolvan.ini
  std::string database;
  std::string exportFolder;  ///< where the daily sales file goes
  std::string examples;
};

/// Where everything of a demo store in `folder` lies.
DemoPlaces PlacesOfDemo(const std::string& folder);

/// Makes the folders, the configuration, the filled database, the template and the examples, and has `complete` do what
/// is left to do on the store. What an earlier demo store left in the folder is replaced. Throws HostError; Access when
/// the folder holds something under one of the names of a demo store, and is none. After any failure, one of
/// `complete` included, nothing that was made is left, so the same can be asked for again.
void MakeDemoStore(
    const DemoPlaces& places, Date today, const std::function<void()>& complete = [] {});

// The parts of which it is made.

/// Writes a whole file over one that is there. `path` is absolute. Throws HostError.
void WriteDemoFile(const std::string& path, std::string_view content);

/// Writes everything in one transaction into empty tables: catalogue, prices, barcodes, deposits and ninety days of
/// sales up to the day before `today`. Throws HostError.
void FillDemoDatabase(DatabaseServices& database, Date today);

/// Writes the template into the application folder, and the examples "precios.xlsx", "precios.xls" and "movilnet.xlsx".
/// `today` becomes their date of creation. "precios.xls" holds the rows of "precios.xlsx", made by tools/make-examples
/// and kept among the data, because the component writes no such file. Throws HostError.
void WriteDemoWorkbooks(const DemoPlaces& places, Date today);

}  // namespace tolvan

// The demo store: a folder with a configuration, a database, the template, and files to try the orders on.
#pragma once

#include <string>

#include "base/Calendar.h"

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

/// Makes the folders, the configuration, the filled database, the template and the examples. What an earlier demo store
/// left in the folder is replaced. Throws HostError; Access when the folder holds a configuration or database that is
/// not of a demo store.
void MakeDemoStore(const DemoPlaces& places, Date today);

}  // namespace tolvan

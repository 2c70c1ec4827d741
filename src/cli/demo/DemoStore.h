// The demo store: a folder with a configuration, a database, the template, and files to try the orders on.
#pragma once

#include <functional>
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

/// Makes the folders, the configuration, the filled database, the template and the examples, and has `complete` do what
/// is left to do on the store. What an earlier demo store left in the folder is replaced. Throws HostError; Access when
/// the folder holds something under one of the names of a demo store, and is none. After any failure, one of
/// `complete` included, nothing that was made is left, so the same can be asked for again.
void MakeDemoStore(
    const DemoPlaces& places, Date today, const std::function<void()>& complete = [] {});

}  // namespace tolvan

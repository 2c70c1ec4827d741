// What a host configuration file (tolvan.ini) says, with the value of every key that it does not name.
#pragma once

#include <chrono>
#include <cstdint>
#include <span>
#include <string>
#include <vector>

#include "store/DatabaseEngines.h"

namespace tolvan {

struct DatabaseConfiguration {
  std::span<const DatabaseEngine> known = DatabaseEngines();  ///< those that `motor` may name
  const DatabaseEngine* engine = &known.front();              ///< one of `known`
  std::string connection = "tienda.db";  ///< a file, relative to the configuration, or an ODBC connection string
  std::chrono::seconds statementLimit{30};
};

struct MailConfiguration {
  std::string server = "smtp://127.0.0.1:25";  ///< smtp:// or smtps:// with host and port; empty: no mail
  std::string user;                            ///< empty: no login
  std::string password;
  std::string sender = "tienda@example.com";
  std::string defaultRecipient;
};

struct LookupConfiguration {
  std::string host;  ///< host[:port]; empty: no lookup
  std::string viewState;
  std::string eventValidation;
};

struct HostConfiguration {
  std::string filePath;  ///< absolute; where relative folders and files begin

  std::string product = "Tolvan";
  std::string applicationFolder = ".";  ///< as written, relative to the configuration
  std::int32_t companyId = 1;
  std::int32_t siteId = 1;
  std::string storeId = "0001";
  std::int32_t inventoryFlag = 0;
  std::string moneyFormat = "#,##0.00";
  bool diagnostic = false;
  std::vector<std::string> permissions{"importar-precios"};
  std::string separator = ",";
  std::string settingsFolder;  ///< as written, relative to the configuration; empty: the XDG folders
  DatabaseConfiguration database;
  MailConfiguration mail;
  LookupConfiguration lookup;
  std::string xmlDownload;
};

/// The folder of the configuration file, absolute, without a separator at its end.
std::string FolderOfConfiguration(const HostConfiguration& configuration);

/// Whether the mail account or the connection string has a password.
bool HasPassword(const HostConfiguration& configuration);

}  // namespace tolvan

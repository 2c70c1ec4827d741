// What a host configuration file (tolvan.ini) says, with the value of every key that it does not name; how it is found,
// read and written.
//
// Lines are "[section]", "key = value", empty, or comments. A comment begins with ";" at the beginning of a line or of
// a value, or after a blank; a ";" inside a value, as in an ODBC connection string, belongs to it. Blanks around keys
// and values do not count. Names of sections and keys are written as they are listed, in lower case. The file is UTF-8,
// with or without a byte order mark, with LF or CR LF. A section may stand in several places, a key only once.
#pragma once

#include <chrono>
#include <cstdint>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "host/FileHelper.h"
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

/// The configuration that the environment names, in TOLVAN_HOST; empty when it names none.
std::string ConfigurationOfEnvironment();

/// Where the configuration is looked for when nothing names one: tolvan/tolvan.ini in the user's XDG folder.
std::string UsualConfiguration();

/// Reads the file at `path`, absolute; `engines` are those that it may name. Throws HostError Configuration; the text
/// names the file, and every line that cannot be used with its number and the cause.
HostConfiguration ReadHostConfiguration(FileHelper& files, const std::string& path,
                                        std::span<const DatabaseEngine> engines = DatabaseEngines());

/// The same from the content of the file.
HostConfiguration ParseHostConfiguration(std::string_view content, const std::string& path,
                                         std::span<const DatabaseEngine> engines = DatabaseEngines());

/// The text of a configuration file that names every key, each with its explanation as a comment. Read again it gives
/// the same configuration. Throws HostError InvalidValue for a value that no file can give: one that a comment would
/// cut short, one with blanks at its ends, or one with a control character.
std::string WriteHostConfiguration(const HostConfiguration& configuration);

}  // namespace tolvan

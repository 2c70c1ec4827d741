#include "database/odbc/OdbcModule.h"

#include <memory>

#include "database/odbc/OdbcDatabaseServices.h"

extern "C" {

[[gnu::visibility("default")]] tolvan::DatabaseServices* tolvanOpenOdbcDatabase(const tolvan::OdbcOptions& options) {
  return std::make_unique<tolvan::OdbcDatabaseServices>(options).release();
}
}

#include "database/odbc/OdbcModule.h"

#include "database/odbc/OdbcDatabaseServices.h"

extern "C" {

[[gnu::visibility("default")]] tolvan::DatabaseServices* tolvanOpenOdbcDatabase(const tolvan::OdbcOptions& options,
                                                                                tolvan::HostError** failure) {
  try {
    return std::make_unique<tolvan::OdbcDatabaseServices>(options).release();
  } catch (const tolvan::HostError& error) {
    *failure = std::make_unique<tolvan::HostError>(error).release();
  } catch (const std::exception& error) {
    *failure = std::make_unique<tolvan::HostError>(tolvan::HostErrorKind::Failed, error.what()).release();
  }
  return nullptr;
}
}

// The entry point of the module that holds everything of ODBC. It is a library of its own, loaded when a server
// database is configured, so that the start of a store on SQLite does not pay for it.
#pragma once

#include "database/odbc/OdbcOptions.h"
#include "host/DatabaseServices.h"

extern "C" {

/// Connects; the caller owns the result and deletes it. A HostError is not thrown across the module's edge: null then,
/// with the error in `failure`, which the caller deletes.
using TolvanOpenOdbcDatabase = tolvan::DatabaseServices*(const tolvan::OdbcOptions& options,
                                                         tolvan::HostError** failure);

TolvanOpenOdbcDatabase tolvanOpenOdbcDatabase;
}

namespace tolvan {

inline constexpr const char* odbcModuleFile = "libtolvan_odbc.so";

}  // namespace tolvan

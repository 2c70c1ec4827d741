// The scripts of data/esquema, one for each engine, as they are embedded into the programs.
#pragma once

#include <string_view>

namespace tolvan::data {

extern const std::string_view sqliteSchema;
extern const std::string_view sqlServerSchema;
extern const std::string_view postgreSqlSchema;
extern const std::string_view accessSchema;

}  // namespace tolvan::data

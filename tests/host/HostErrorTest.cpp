#include "host/HostError.h"

#include <gtest/gtest.h>

namespace tolvan {
namespace {

TEST(HostError, TextNamesCauseNumberAndPlaceAndLeavesOutWhatIsMissing) {
  const HostError whole(HostErrorKind::Busy, "database is locked", "tienda.db", 5);
  EXPECT_EQ(TextForPeople(whole), "Ocupado por otro programa: database is locked (código 5)\r\ntienda.db");
  EXPECT_EQ(TextForPeople(HostError(HostErrorKind::Failed, "")), "Error");
}

}  // namespace
}  // namespace tolvan

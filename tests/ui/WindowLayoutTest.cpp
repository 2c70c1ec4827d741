#include "ui/WindowLayout.h"

#include <gtest/gtest.h>

#include "support/FakeHost.h"
#include "ui/OptionsFixture.h"

namespace tolvan {
namespace {

struct WindowLayout : ::testing::Test {
  test::FakeServices services;
  test::FakeLayout window;
};

TEST_F(WindowLayout, OpensCentredWhereNothingIsStored) {
  RestoreLayout(services, window);
  EXPECT_EQ(window.bounds, (Rectangle{5100, 3000, 9000, 6000}));
  EXPECT_EQ(window.state, WindowState::Normal);
}

TEST_F(WindowLayout, AMaximisedWindowKeepsTheNormalPositionItHadBefore) {
  window.bounds = {150, 300, 9900, 7000};
  SaveLayout(services, window);
  window.bounds = {0, 0, 19200, 12000};
  window.state = WindowState::Maximised;
  SaveLayout(services, window);
  test::FakeLayout reopened;
  RestoreLayout(services, reopened);
  EXPECT_EQ(reopened.bounds, (Rectangle{150, 300, 9900, 7000}));
  EXPECT_EQ(reopened.state, WindowState::Maximised);
  services.layouts["Ventanas/IMPEXPfrmOpciones_WS"] = static_cast<std::int32_t>(WindowState::Minimised);
  RestoreLayout(services, reopened);
  EXPECT_EQ(reopened.state, WindowState::Normal) << "not out of sight";
  EXPECT_EQ(services.layouts.at("Ventanas/IMPEXPfrmOpciones_L"), 150);
}

TEST_F(WindowLayout, AFixedBorderStoresNoSizeAndIgnoresAStoredOne) {
  window.sizable = false;
  SaveLayout(services, window);
  EXPECT_EQ(services.layouts.count("Ventanas/IMPEXPfrmOpciones_H"), 0U);
  services.layouts["Ventanas/IMPEXPfrmOpciones_H"] = 300;
  services.layouts["Ventanas/IMPEXPfrmOpciones_W"] = 300;
  RestoreLayout(services, window);
  EXPECT_EQ(window.bounds, (Rectangle{0, 0, 9000, 6000}));
}

TEST_F(WindowLayout, WhatLiesOutsideTheScreensIsBroughtBack) {
  const std::vector<Rectangle> screens{{0, 0, 19200, 12000}, {19200, 0, 15000, 9000}};
  struct Case {
    Rectangle stored;
    Rectangle expected;
  };
  const std::vector<Case> cases{
      {{100, 100, 9000, 6000}, {100, 100, 9000, 6000}},      // all of it is there
      {{90000, 500, 9000, 6000}, {10200, 500, 9000, 6000}},  // the screen it was on is gone
      {{16000, 11000, 9000, 6000}, {10200, 6000, 9000, 6000}},
      {{25000, 8000, 9000, 6000}, {25000, 3000, 9000, 6000}},  // on the second screen
      {{0, 0, 40000, 40000}, {0, 0, 19200, 12000}},            // larger than any
  };
  for (const Case& each : cases) EXPECT_EQ(BroughtOnScreen(each.stored, screens), each.expected) << each.stored.left;
  EXPECT_EQ(BroughtOnScreen({90000, 1, 2, 3}, {}), (Rectangle{90000, 1, 2, 3}));
}

TEST_F(WindowLayout, AStoredStateAndSizeThatCannotBeAreIgnored) {
  services.layouts = {{"Ventanas/IMPEXPfrmOpciones_WS", 7},
                      {"Ventanas/IMPEXPfrmOpciones_H", 0},
                      {"Ventanas/IMPEXPfrmOpciones_W", -5},
                      {"Ventanas/IMPEXPfrmOpciones_L", 0},
                      {"Ventanas/IMPEXPfrmOpciones_T", 0}};
  RestoreLayout(services, window);
  EXPECT_EQ(window.bounds, (Rectangle{0, 0, 9000, 6000}));
  EXPECT_EQ(window.state, WindowState::Normal);
}

TEST_F(WindowLayout, ColumnsComeBackAsTheyWereLeft) {
  const ListLayout fresh{.widths = {0, 0, 0}, .order = {0, 1, 2}};
  EXPECT_EQ(LoadListLayout(services, "lista", 3), fresh);
  const ListLayout left{.widths = {900, 1500, 750}, .order = {2, 0, 1}, .sortColumn = 1, .ascending = false};
  SaveListLayout(services, "lista", left);
  EXPECT_EQ(LoadListLayout(services, "lista", 3), left);
  services.layouts["Listas/IMPEXPlista_V1"] = 2;  // the same column twice
  services.layouts["Listas/IMPEXPlista_SK"] = 3;
  const ListLayout loaded = LoadListLayout(services, "lista", 3);
  EXPECT_EQ(loaded.order, fresh.order);
  EXPECT_EQ(loaded.sortColumn, -1);
}

}  // namespace
}  // namespace tolvan

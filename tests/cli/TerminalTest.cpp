// What the program shows on a terminal.
#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>

#include "base/Text.h"
#include "cli/DemoStoreFixture.h"
#include "cli/Help.h"
#include "cli/Process.h"
#include "cli/commands/AllCommands.h"
#include "support/ChildProcess.h"
#include "system/posix/FileDescriptor.h"

namespace tolvan {
namespace {

/// What bash offers for the last of the words, sorted as it stands.
std::string Completed(const std::string& script, const std::string& words) {
  const std::string program = "COMP_WORDS=(" + words + "); COMP_CWORD=$((${#COMP_WORDS[@]} - 1)); _tolvan_impexp; " +
                              "printf '%s ' \"${COMPREPLY[@]}\"";
  int ends[2];
  if (::pipe(ends) != 0) return "no pipe";
  const pid_t bash = test::StartProgram({"/bin/bash", "-c", script + program}, ends[1], [&] { ::close(ends[0]); });
  ::close(ends[1]);
  std::string offered = test::ReadToEnd(ends[0]);
  ::waitpid(bash, nullptr, 0);
  return offered;
}

TEST(BashCompletion, OffersWhatFits) {
  const std::string script = BashCompletion(AllCommands());
  const std::vector<std::pair<const char*, const char*>> cases = {
      {"tolvan-impexp ven", "ventana ventas "},
      {"tolvan-impexp --host demo lo", "lote "},
      {"tolvan-impexp --host = demo --sil", "--silencio "},
      {"tolvan-impexp importar-excel --in", "--informe "},
      {"tolvan-impexp importar-excel libro.xlsx --informe ven", " "},
      {"tolvan-impexp colector x --proposito = c", "conteo "},
      {"tolvan-impexp vexlor --proposito c", " "},
      {"tolvan-impexp opciones SVentas_D", "SVentas_DireccionServidor= "},
      {"tolvan-impexp opciones SVentas_DireccionServidor = S", " "},
      {"tolvan-impexp ayuda cr", "crc32 "},
      {"tolvan-impexp lote c", "cerrar "},
  };
  for (const auto& [words, offered] : cases) EXPECT_EQ(Completed(script, words), offered) << words;
}

TEST(Help, FitsTheTerminalAndLosesNoWord) {
  const auto inOneLine = [](std::string text) {
    std::erase_if(text, [](char c) { return c == ' ' || c == '\n'; });
    return text;
  };
  test::CommandRunner runner;
  const std::vector<std::string> names = NamesOf(AllCommands());
  for (const std::string& name : names) {
    runner.columns = 1'000;
    const std::string wide = runner.Run({"ayuda", name}).output;
    EXPECT_EQ(runner.Run({name, "-h"}).output, wide);
    for (const std::size_t columns : {40U, 60U, 80U}) {
      runner.columns = columns;
      const std::string help = runner.Run({"ayuda", name}).output;
      EXPECT_EQ(inOneLine(help), inOneLine(wide));
      const std::string wrapped = help.substr(0, help.find("\nEjemplos:"));  // these can be copied, so they stay whole
      for (const std::string_view line : Split(wrapped, '\n')) EXPECT_LE(CountColumns(line), columns) << line;
    }
  }
  EXPECT_EQ(runner.Run({"ayuda", "vexlr"}).code, 2);
}

using Review = test::DemoStoreFixture;

TEST_F(Review, FitsTheTerminalAndIsWholeElsewhere) {
  std::vector<std::string> codes;
  for (int row = 0; row < 1'100; ++row) codes.push_back("N" + std::to_string(row));
  std::vector<std::vector<NewCell>> rows{
      {"ALI0001", {}, {}, {}, {}, 1234.5}, {"N0", "otra vez"}, {"日本", "日本\x1B[2J\xC2\x9B[2J"}};
  for (const std::string& code : codes) rows.push_back({code, "cafe molido de la loma alta", {}, {}, 10.5, 1234.0});
  const std::vector<std::string> words{"importar-excel", Workbook("lista.xlsx", 4, rows), "--simular"};
  const std::string whole = runner.Run(words).output;
  EXPECT_EQ(std::ranges::count(whole, '\n'), 1'103 + 3 * 3 + 4);
  EXPECT_NE(whole.find("\nLos títulos de las filas 3 y 4 no son los de la plantilla"), std::string::npos);
  EXPECT_EQ(whole.find_first_of("\x1B\x9B"), std::string::npos);
  for (const std::size_t columns : {40U, 60U, 80U, 120U}) {
    runner.columns = columns;
    const std::string table = runner.Run(words).output;
    for (const std::string_view line : Split(table, '\n')) EXPECT_LE(CountColumns(line), columns) << line;
    EXPECT_NE(table.find("  … y 1,053 más; --informe los escribe\n"), std::string::npos) << table;
    EXPECT_NE(table.find("ALI0001"), std::string::npos) << "a small group is shown whole";
  }
  runner.columns = 70;
  const std::string table = runner.Run(words).output;
  EXPECT_NE(table.find("\n    10  N2     Sí     CAFE MOLIDO DE LA LOMA ALTA  10.50  1,234.00\n"), std::string::npos)
      << table;
  runner.columns = 60;
  EXPECT_NE(runner.Run(words).output.find("\n    10  N2     Sí     CAFE MOLIDO DE LA      10.50  1,234.00\n"
                                          "                      LOMA ALTA\n"),
            std::string::npos);
}

TEST_F(Review, NeedsAYesFromAPersonAndRowsThatCouldBeShown) {
  const std::string book = Workbook("lista.xlsx", 4, {{"NUEVO", {}, {}, {}, 1.0, 2.0}});
  const std::string query = "SELECT count(*) FROM Items WHERE idItem = 'NUEVO'";
  runner.terminal = true;
  for (const char* answer : {"", "\n", "n\n"}) {
    runner.typed = answer;
    EXPECT_EQ(runner.Run({"importar-excel", book}).code, 0);
    EXPECT_EQ(Query(query), "0,") << answer;
  }
  runner.terminal = false;
  const FileDescriptor full(::open("/dev/full", O_WRONLY));
  DescriptorBuffer lost(full.Number());
  runner.outputBuffer = &lost;
  EXPECT_EQ(runner.Run({"importar-excel", book}).code, 1);
  EXPECT_EQ(Query(query), "0,");
  runner.outputBuffer = nullptr;
  runner.terminal = true;
  runner.typed = "sí\n";
  EXPECT_EQ(runner.Run({"importar-excel", book}).code, 0);
  EXPECT_EQ(Query(query), "1,");
}

}  // namespace
}  // namespace tolvan

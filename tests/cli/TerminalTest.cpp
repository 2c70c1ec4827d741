// The program on a terminal and as a process: help, completion and messages, progress, where its words go, the signals
// that stop it, and the program of the windows, which it starts.
#include <csignal>
#include <cstdlib>
#include <thread>

#include "base/Text.h"
#include "cli/DemoStoreFixture.h"
#include "cli/Help.h"
#include "cli/Process.h"
#include "cli/TerminalProgress.h"
#include "cli/commands/AllCommands.h"
#include "support/ChildProcess.h"

namespace tolvan {
namespace {

using testing::HasSubstr;

/// What bash offers for the last of the words, in its order.
std::string Completed(const std::string& words) {
  ::setenv("SCRIPT", BashCompletion(AllCommands()).c_str(), 1);
  return test::OutputOf(
      "bash -c 'eval \"$SCRIPT\"; COMP_WORDS=(" + words +
      "); COMP_CWORD=$((${#COMP_WORDS[@]} - 1)); _tolvan_impexp; printf \"%s \" \"${COMPREPLY[@]}\"'");
}

TEST(BashCompletion, OffersWhatFits) {
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
  for (const auto& [words, offered] : cases) EXPECT_EQ(Completed(words), offered) << words;
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

TEST(TerminalProgress, LeavesOutWhatCanBestBeMissed) {
  const std::pair<std::size_t, const char*> cases[] = {
      {120, "Leyendo \\[#{10}\\.{10}\\] 50 %, 9 líneas, [0-9]+ por segundo, quedan [0-9] s"},
      {60, "Leyendo 50 %, 9 líneas, [0-9]+ por segundo, quedan [0-9] s"},
      {45, "Leyendo 50 %, 9 líneas, quedan [0-9] s"},
      {32, "Ley… 50 %, 9 líneas, quedan [0-9] s"}};
  for (const auto& [columns, line] : cases) {
    std::ostringstream out;
    TerminalProgress progress(
        out, [width = columns] { return std::optional(width); }, {}, "líneas");
    progress.SetCaption("Leyendo");
    progress.SetMax(18);
    progress.SetVisible(true);
    progress.SetValue(8);
    EXPECT_EQ(out.str(), "") << "what is over at once is not drawn";
    std::this_thread::sleep_for(std::chrono::milliseconds(110));
    progress.SetValue(9);
    EXPECT_THAT(out.str(), testing::MatchesRegex("\r\x1B\\[K" + std::string(line)));
  }
}

/// Standard error of the program on a terminal of so many columns, at which nobody types.
std::string OnTerminal(int columns, const std::string& words) {
  const std::string line = "stty cols " + std::to_string(columns) + "; " TOLVAN_PROGRAM " " + words + " >/dev/null";
  return ReplaceAll(test::OutputOf("script -qec '" + line + "' /dev/null </dev/null"), "\r\n", "\n");
}

using Messages = test::DemoStoreFixture;

TEST_F(Messages, AreBrokenAtWordsWhereATerminalShowsThem) {
  const std::string path = folder.File("una-configuracion-que-no-existe.ini");
  const std::string words = "--host " + path + " vexlor";
  const std::string whole = test::OutputOf(TOLVAN_PROGRAM " " + words + " 2>&1 >/dev/null");
  EXPECT_THAT(whole,
              HasSubstr("\nIndique la configuración de su tienda con --host RUTA o en la variable TOLVAN_HOST, o"));
  for (const int columns : {40, 80}) {
    const std::string shown = OnTerminal(columns, words);
    EXPECT_THAT(shown, HasSubstr(path)) << "it can be copied";
    EXPECT_EQ(ReplaceAll(shown, "\n", " "), ReplaceAll(whole, "\n", " "));
    for (const std::string_view line : Split(shown, '\n')) {
      EXPECT_TRUE(CountColumns(line) <= static_cast<std::size_t>(columns) || line.find(' ') == line.npos) << line;
    }
  }
  const std::string book = Workbook("lista.xlsx", 4, {{"NUEVO", {}, {}, {}, 1.0, 2.0}});
  EXPECT_THAT(OnTerminal(40, "--silencio --host " + places.host + " importar-excel " + book),
              HasSubstr("¿Ya revisó los renglones y desea\nproceder con la importación? [s/N] \n"
                        "No se aplicó nada: no se confirmó la\noperación.\n"));
}

TEST(MessageBuffer, LeavesALineThatFitsAsItIs) {
  std::stringbuf shown;
  MessageBuffer buffer(shown, [] { return std::optional<std::size_t>(10); });
  std::ostream(&buffer) << clearLine << "uno dos 45" << std::flush << clearLine << "seis siete ocho\n";
  EXPECT_EQ(shown.str(), "\r\x1B[Kuno dos 45\r\x1B[Kseis siete\nocho\n");
}

TEST(Program, WrongUsageLeavesStandardOutputEmptyUnlessJsonIsWanted) {
  test::CommandRunner runner;
  const auto plain = runner.Run({"nada"});
  EXPECT_EQ(plain.code, 2);
  EXPECT_EQ(plain.output, "");
  EXPECT_EQ(plain.messages, "No existe la orden \"nada\"\nLa ayuda: tolvan-impexp --ayuda\n");
  const auto json = runner.Run({"--json", "nada"});
  EXPECT_EQ(json.output, "{\n  \"error\": \"No existe la orden \\\"nada\\\"\"\n}\n");
}

TEST(Program, AResultThatCannotBeWrittenIsAFailureUnlessNobodyWantsIt) {
  for (const std::string words : {"--ayuda", "--help", "--version", "rnc 1", "--json rnc 1", "--json nada"}) {
    const std::string call = TOLVAN_PROGRAM " " + words + " 2>&1 ";
    const bool isWrong = words == "--json nada";
    EXPECT_THAT(test::OutputOf(call + ">/dev/full; echo $?"),
                testing::EndsWith(std::string(isWrong ? "No" : "La orden terminó, pero no") +
                                  " se pudo escribir el resultado en la salida estándar\n"
                                  "No queda espacio disponible: el disco está lleno (código 28)\n" +
                                  (isWrong ? "2\n" : "1\n")));
    EXPECT_EQ(test::OutputOf("bash -c '{ sleep 0.1; " + call + "; } | :; echo ${PIPESTATUS[0]}'"),
              isWrong ? "2\n" : "0\n");
  }
}

std::string AfterSignals(int signal, int times, void (*before)(int)) {
  return test::RunInChild([&]() -> std::string {
    std::signal(signal, before);
    const SignalInterruption interruption(std::cerr, false);
    for (int time = 0; time < times; ++time) std::raise(signal);
    return interruption.Requested() ? "stop" : "go on";
  });
}

TEST(SignalInterruption, IsAskedForBySignalsThatWereNotIgnoredBefore) {
  for (const int signal : {SIGINT, SIGTERM, SIGHUP}) {
    EXPECT_EQ(AfterSignals(signal, 1, SIG_DFL), "stop") << signal;
    EXPECT_EQ(AfterSignals(signal, 1, SIG_IGN), "go on") << signal;
  }
  EXPECT_EQ(AfterSignals(SIGHUP, 2, SIG_DFL), "stop");
  EXPECT_NE(AfterSignals(SIGINT, 2, SIG_DFL), "stop") << "the second one does not wait";
}

TEST(SignalInterruption, ReportsEveryWaitOnce) {
  EXPECT_EQ(test::RunInChild([] {
              std::ostringstream messages;
              const SignalInterruption interruption(messages, true);
              for (const char* text : {"una", "una", "otra"}) interruption.WaitBegins(text);
              return messages.str();
            }),
            "\r\x1B[Kuna\n\r\x1B[Kotra\n");
}

/// A script in the place of the program of the windows.
class Ventana : public test::DemoStoreFixture {
 protected:
  Ventana() {
    runner.windowProgram = folder.File("programa");
    ::setenv("DISPLAY", ":0", 1);
  }

  void Write(const std::string& script) const {
    test::WriteFile(runner.windowProgram, "#!/bin/sh\n" + script + "\n");
    std::filesystem::permissions(runner.windowProgram, std::filesystem::perms::owner_all);
  }
};

TEST_F(Ventana, StartsTheProgramOnTheSameHostAndWaits) {
  Write("echo \"$@\" > " + folder.File("dicho"));
  Expect({"ventana"}, 0);
  EXPECT_EQ(test::ReadFile(folder.File("dicho")), "--host " + runner.host + "\n");
  runner.host = folder.File("no-hay.ini");
  Expect({"ventana"}, 4, "Indique la configuración de su tienda");
  runner.host.clear();
  Expect({"ventana"}, 0);
  EXPECT_EQ(test::ReadFile(folder.File("dicho")), "\n") << "none yet: the program asks for one";
}

TEST_F(Ventana, SaysWhyThereIsNone) {
  Expect({"ventana"}, 1, "no está instalado");
  Write("exit 4");
  Expect({"ventana"}, 4);
  Write("kill -KILL $$");
  Expect({"ventana"}, 1, "terminó con un error");
  ::unsetenv("DISPLAY");
  ::unsetenv("WAYLAND_DISPLAY");
  EXPECT_THAT(Json({"ventana"}, 1)["error"].get<std::string>(), HasSubstr("No hay pantalla"));
  std::filesystem::remove(places.database);
  Expect({"ventana"}, 4);
}

}  // namespace
}  // namespace tolvan

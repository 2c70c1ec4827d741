#include "cli/CommandLine.h"

#include <gtest/gtest.h>

#include "base/Text.h"
#include "cli/commands/AllCommands.h"

namespace tolvan {
namespace {

const std::vector<Command> commands = {
    {.name = "uno",
     .summary = "",
     .arguments = {{.name = "LIBRO", .summary = ""}},
     .options = {{.name = "--asociar", .summary = "", .valueName = "F=I", .repeated = true},
                 {.name = "--codigo", .summary = "", .valueName = "F=C", .repeated = true},
                 {.name = "--modo", .summary = "", .valueName = "M", .required = true, .choices = {"a", "b"}},
                 {.name = "--simular", .summary = ""}}},
    {.name = "varios", .summary = "", .arguments = {{.name = "X", .summary = "", .required = false, .repeated = true}}},
};

std::string Joined(const ParsedWords& given) {
  std::string text;
  for (const std::string& argument : given.arguments) text += argument + ' ';
  for (const GivenOption& option : given.options) text += option.name + '=' + option.value + ' ';
  return text;
}

TEST(CommandLine, KeepsOptionsInTheOrderGivenAndTakesGlobalsAnywhere) {
  const ParsedCommandLine line = ParseCommandLine({"--json", "--host=h.ini", "uno", "--codigo", "2=B", "l.xlsx",
                                                   "--asociar=1=A", "--modo", "a", "--codigo", "3=", "--simular"},
                                                  commands);
  EXPECT_EQ(line.command, "uno");
  EXPECT_EQ(Joined(line.given), "l.xlsx --codigo=2=B --asociar=1=A --modo=a --codigo=3= --simular= ");
  EXPECT_EQ(Joined(line.global), "--json= --host=h.ini ");
}

TEST(CommandLine, TwoDashesEndTheOptions) {
  EXPECT_EQ(Joined(ParseCommandLine({"varios", "uno", "-", "--", "--b", "-c"}, commands).given), "uno - --b -c ");
}

TEST(CommandLine, WrongUsageIsToldInSpanishAndNamed) {
  const std::vector<std::pair<std::vector<std::string>, std::string>> cases = {
      {{}, "Falta la orden"},
      {{"dos"}, "No existe la orden \"dos\""},
      {{"vraios", "uno"}, "No existe la orden \"vraios\"; ¿quiso decir varios?"},
      {{"-", "varios"}, "La orden va delante de sus argumentos: \"-\" está antes de varios"},
      {{"--json", "--host", "uno", "l", "uno"}, "La orden va delante de sus argumentos: \"l\" está antes de uno"},
      {{"--simular", "uno", "l"}, "La opción --simular va detrás de su orden"},
      {{"--nada"}, "Opción desconocida: --nada"},
      {{"--hots=x", "varios"}, "Opción desconocida: --hots; ¿quiso decir --host?"},
      {{"uno", "--mdo=a", "l"}, "Opción desconocida en la orden uno: --mdo=a; ¿quiso decir --modo?"},
      {{"uno", "--modo", "a"}, "La orden uno requiere LIBRO"},
      {{"uno", "l"}, "La orden uno requiere --modo M"},
      {{"uno", "l", "--modo", "c"}, "La opción --modo no admite el valor \"c\": use a o b"},
      {{"uno", "l", "--modo", "a", "--modo", "b"}, "La opción --modo se indicó más de una vez"},
      {{"uno", "l", "--modo"}, "Falta el valor de la opción --modo, o no admite ninguno"},
      {{"uno", "l", "m", "--modo", "a"}, "Argumento de más en la orden uno: m"},
      {{"uno", "l", "--modo", "a", "--nada"}, "Opción desconocida en la orden uno: --nada"},
      {{"--host", "a", "--host", "b", "varios"}, "La opción --host se indicó más de una vez"},
  };
  for (const auto& [words, text] : cases) {
    try {
      ParseCommandLine(words, commands);
      ADD_FAILURE() << "taken, but expected: " << text;
    } catch (const CommandFailure& failure) {
      EXPECT_EQ(failure.what(), text);
      EXPECT_EQ(failure.Code(), ExitCode::Usage);
    }
  }
}

TEST(CommandLine, EveryExampleIsACall) {
  const std::vector<Command> all = AllCommands();
  for (const Command& command : all) {
    EXPECT_FALSE(command.examples.empty()) << command.name;
    for (const ExampleDefinition& example : command.examples) {
      std::vector<std::string> words;
      for (const std::string_view word : Split(example.words, ' ')) words.emplace_back(word);
      EXPECT_NO_THROW(ParseCommandLine(words, all)) << example.words;
    }
  }
}

TEST(Suggestion, NamesTheNearest) {
  const std::vector<std::string> known{"importar-excel", "importar-rnc", "ventas", "ventana", "rnc"};
  const std::vector<std::pair<const char*, const char*>> cases = {
      {"IMPORTAR", "; ¿quiso decir importar-excel o importar-rnc?"},
      {"ventaan", "; ¿quiso decir ventana?"},
      {"venta", "; ¿quiso decir ventas o ventana?"},
      {"rcn", "; ¿quiso decir rnc?"},
      {"lote", ""},
      {"", ""},
  };
  for (const auto& [word, text] : cases) EXPECT_EQ(DidYouMean(word, known), text) << word;
}

}  // namespace
}  // namespace tolvan

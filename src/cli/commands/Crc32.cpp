// The checksum of a file of any size, or of a text.
#include <algorithm>
#include <array>
#include <cstdio>
#include <vector>

#include "cli/CommandCall.h"
#include "cli/TerminalProgress.h"
#include "cli/commands/AllCommands.h"
#include "host/UserInterface.h"
#include "system/posix/PosixFiles.h"
#include "transport/CRC32.h"

namespace tolvan {
namespace {

constexpr std::size_t blockSize = std::size_t{1} << 20;

void ShowProgress(TerminalLine& line, std::uint64_t done, std::uint64_t size) {
  if (size == 0 || !line.Due()) return;
  const double share = std::min(1.0, static_cast<double>(done) / static_cast<double>(size));
  line.Draw("Leyendo: " + std::to_string(static_cast<int>(share * 100)) + " %, " + TimeLeft(line.Seconds(), share));
}

std::int32_t FileChecksum(CommandCall& call, const std::string& path) {
  const std::unique_ptr<InputFile> file = OpenInputFile(path);
  TerminalLine line(call.Messages(), call.MessagesColumns());
  line.Begin();
  Crc32Digest digest;
  std::vector<char> block(blockSize);
  std::uint64_t done = 0;
  while (const std::size_t count = file->Read(block)) {
    if (call.UserInterruption().Requested()) throw HostError(HostErrorKind::Interrupted, {}, path);
    digest.Add({reinterpret_cast<const std::uint8_t*>(block.data()), count});
    done += count;
    if (call.ShowsProgress()) ShowProgress(line, done, file->Size());
  }
  line.Clear();
  return static_cast<std::int32_t>(digest.Value());
}

std::int32_t TextChecksum(const std::string& text) {
  try {
    return CRC32().GetStringCrc32(text);
  } catch (const Crc32Overflow& error) {
    throw CommandFailure(ExitCode::Failed, error.what());
  }
}

std::string Hexadecimal(std::int32_t value) {
  std::array<char, 9> digits{};
  std::snprintf(digits.data(), digits.size(), "%08X", static_cast<unsigned>(value));
  return digits.data();
}

ExitCode RunCrc32(CommandCall& call) {
  const ParsedWords& given = call.Given();
  if (given.Has("--texto") == !given.arguments.empty()) {
    throw CommandFailure(ExitCode::Usage, "La orden crc32 requiere un ARCHIVO o --texto TEXTO, uno de los dos");
  }
  const std::int32_t value =
      given.Has("--texto") ? TextChecksum(given.Value("--texto")) : FileChecksum(call, call.PathArgument());
  call.Print({{"valor", value, "Valor"}, {"hex", Hexadecimal(value), "Hex"}});
  return ExitCode::Done;
}

}  // namespace

Command Crc32Command() {
  return {.name = "crc32",
          .summary = "Calcula el CRC-32 de un archivo o de un texto",
          .arguments =
              {{.name = "ARCHIVO", .summary = "el archivo, de cualquier tamaño", .required = false, .isPath = true}},
          .options = {{.name = "--texto",
                       .summary = "el texto, un byte por carácter (Windows-1252), en lugar de un archivo",
                       .valueName = "TEXTO"}},
          .notes = "Es el CRC-32 de zip y PNG.",
          .examples = {{"crc32 precios.xlsx", "el de un archivo"}, {"crc32 --texto hola", "el de un texto"}},
          .run = &RunCrc32};
}

}  // namespace tolvan

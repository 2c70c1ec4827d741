#include "desktop/ProgramPlaces.h"

namespace tolvan {

std::filesystem::path ProgramFolder() {
  std::error_code ignored;
  return std::filesystem::read_symlink("/proc/self/exe", ignored).parent_path();
}

std::filesystem::path ShareFolder() {
  return ProgramFolder().parent_path() / "share";
}

}  // namespace tolvan

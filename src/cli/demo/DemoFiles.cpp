#include "cli/demo/DemoFiles.h"

#include "system/posix/PosixFileHelper.h"

namespace tolvan {

void WriteDemoFile(const std::string& path, std::string_view content) {
  const std::unique_ptr<WholeFile> file = PosixFileHelper("/").CreateWhole(path);
  file->Write(content);
  file->Commit();
}

}  // namespace tolvan

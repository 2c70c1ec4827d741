#include "store/DeferredArchiveReader.h"

#include <new>

namespace tolvan {

std::unique_ptr<Archive> DeferredArchiveReader::OpenArchive(std::string_view path) {
  if (!reader_) {
    reader_.reset(module_.EntryPoint<TolvanMakeArchiveReader>("tolvanMakeArchiveReader")());
    if (!reader_) throw std::bad_alloc();
  }
  return reader_->OpenArchive(path);
}

}  // namespace tolvan

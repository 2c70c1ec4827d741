// Nettle because it is a plain library of algorithms: nothing is initialised when the process starts.
#include "system/NettleHashService.h"

#include <nettle/base16.h>
#include <nettle/md5.h>

#include <array>

namespace tolvan {

std::string NettleHashService::Md5(std::string_view bytes) const {
  md5_ctx context{};
  md5_init(&context);
  md5_update(&context, bytes.size(), reinterpret_cast<const std::uint8_t*>(bytes.data()));
  std::array<std::uint8_t, MD5_DIGEST_SIZE> digest{};
  md5_digest(&context, digest.size(), digest.data());
  std::string text(BASE16_ENCODE_LENGTH(digest.size()), '\0');
  base16_encode_update(text.data(), digest.size(), digest.data());
  return text;
}

}  // namespace tolvan

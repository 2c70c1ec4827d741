#pragma once

#include "host/SystemServices.h"

namespace tolvan {

class NettleHashService final : public HashService {
 public:
  std::string Md5(std::string_view bytes) const override;
};

}  // namespace tolvan

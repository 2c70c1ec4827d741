// The host behind the windows: the configuration read, the component attached to it, its settings loaded, its database
// opened.
#pragma once

#include <memory>
#include <string>

#include "component/clsImpExp.h"
#include "store/ConfiguredHostFactory.h"

namespace tolvan {

class DesktopHost {
 public:
  /// Throws HostError when the configuration, its folders or the database cannot be used.
  DesktopHost(const std::string& configurationPath, const HostFront& front, OpcionesWindow window);
  ~DesktopHost();
  DesktopHost(const DesktopHost&) = delete;
  DesktopHost& operator=(const DesktopHost&) = delete;

  clsImpExp& Component() { return *component_; }

 private:
  std::unique_ptr<HostFactory> factory_;
  std::unique_ptr<clsImpExp> component_;
};

}  // namespace tolvan

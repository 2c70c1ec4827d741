#include "desktop/DesktopHost.h"

#include "store/ConfiguredHostFactory.h"

namespace tolvan {

DesktopHost::DesktopHost(const std::string& configurationPath, const HostFront& front, OpcionesWindow window)
    : factory_(std::make_unique<ConfiguredHostFactory>(OpenHostConfiguration(configurationPath), front)),
      component_(std::make_unique<clsImpExp>(*factory_, std::move(window))) {
  component_->DefineSettings();
  static_cast<void>(component_->Context().application.Database());
}

DesktopHost::~DesktopHost() = default;

}  // namespace tolvan

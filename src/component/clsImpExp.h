// The entry of the component. Creating it attaches to the host's services; its one public operation opens the options
// window, or runs the daily sales export unattended.
#pragma once

#include <functional>
#include <memory>
#include <string_view>

#include "host/HostContext.h"
#include "services/ActionReport.h"
#include "services/ComponentContext.h"

namespace tolvan {

/// Shows the options window modally and returns when it is closed. A main hands it in; the window's logic is made
/// inside it, over the view that it owns, because controls exist before the logic fills them.
using OptionsWindow = std::function<void(const ComponentContext& context)>;

class clsImpExp {
 public:
  /// Creates the host's application services, then its context, and takes the references it holds for its lifetime.
  /// `factory` is used here only. A HostError of the factory passes through. `window` may be empty where there is
  /// no window; then only the unattended mode does anything.
  clsImpExp(HostFactory& factory, OptionsWindow window);

  /// The mode "vexlor", in any casing, runs the daily sales export of yesterday without showing anything; every other
  /// mode shows the window. The settings must have been defined.
  void VentanaImpExp(std::string_view mode);

  /// Defines the sixteen settings and loads their stored values. For the host's settings layer. Throws HostError.
  void DefineSettings();

  /// Makes changed settings durable. For the host's settings layer. Throws HostError.
  void SaveSettings();

  const ComponentContext& Context() const { return context_; }

  /// How the last unattended run went.
  const ActionReport& LastReport() const { return report_; }

 private:
  std::unique_ptr<AppServices> services_;
  std::unique_ptr<HostContext> host_;
  ImpExpSettings settings_;
  ComponentContext context_;
  OptionsWindow window_;
  ActionReport report_;
};

}  // namespace tolvan

// What a start without a configuration offers: a demo store, the configuration that the shop has already, help.
#pragma once

#include <functional>
#include <optional>
#include <string>

#include "host/FileHelper.h"
#include "host/UserInterface.h"

namespace tolvan {

class FirstRun {
 public:
  /// What the front does; each gives a text for people when it failed, and an empty one otherwise.
  struct Steps {
    std::function<std::string(const std::string& folder)> makeDemo;         ///< makes a demo store in the folder
    std::function<std::string(const std::string& configuration)> check;     ///< whether it can be read
    std::function<std::string(const std::string& configuration)> remember;  ///< makes it the one that is opened always
  };

  struct Places {
    std::string usual;   ///< where the configuration was looked for
    std::string home;    ///< the user's folder
    std::string manual;  ///< empty when it is not installed
  };

  /// Dialogs and files outlive this object.
  FirstRun(Dialogs& dialogs, FileHelper& files, Places places, Steps steps);

  /// What the window says above its buttons.
  std::string Greeting() const;

  // The buttons. The configuration to open; nothing when the user cancelled, and after a failure, which has been shown.

  /// Asks for a folder and makes the demo store in a folder "tienda-demo" inside it.
  std::optional<std::string> bDemostracion_Click(bool remember);
  std::optional<std::string> bElegir_Click(bool remember);
  void bAyuda_Click();

 private:
  std::optional<std::string> Take(const std::string& configuration, bool remember);
  void Warn(const std::string& text);

  Dialogs* dialogs_;
  FileHelper* files_;
  Places places_;
  Steps steps_;
};

}  // namespace tolvan

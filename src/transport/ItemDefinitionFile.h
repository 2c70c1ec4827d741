// Writes what the collector device must know of the store, its items, barcodes and deposits, to one transport file.
#pragma once

#include <cstddef>
#include <functional>
#include <optional>
#include <string>
#include <string_view>

#include "host/DatabaseServices.h"
#include "host/FileHelper.h"
#include "host/UserInterface.h"

namespace tolvan {

class basComponenteXML;
class clsDatosTransporteXMLSalida;
struct ComponentContext;

enum class ItemDefinitionOutcome {
  Written,
  NoXmlLibrary,    ///< the user was told by a box
  QueryNotOpened,  ///< stopped silently: no box was shown
  Failed,          ///< anything later: reading, building or saving failed, or the user interrupted
};

struct ItemDefinitionResult {
  ItemDefinitionOutcome outcome = ItemDefinitionOutcome::Failed;
  std::string error;     ///< why nothing was written, for people; empty when the file was written
  std::string instance;  ///< the identifier of the document
  std::size_t items = 0;
  std::size_t barcodes = 0;
  std::size_t deposits = 0;
};

/// Told the rows read so far, every thousand; nothing when the work has ended, before its outcome is told.
using CollectorProgress = std::function<void(std::optional<std::size_t> rows)>;

/// What the writer works on; all of it outlives the writer.
struct ItemDefinitionServices {
  DatabaseServices& database;
  FileHelper& files;
  Dialogs& dialogs;
  const Interruption& interruption;
  basComponenteXML& xml;
  std::string productName;     ///< title of the success message
  CollectorProgress progress;  ///< may be empty
};

/// Those of the host, without progress. Opens the database at the first call; throws HostError when it cannot.
ItemDefinitionServices CollectorServices(const ComponentContext& context, basComponenteXML& xml);

class ItemDefinitionFile {
 public:
  static constexpr std::string_view documentClass = "DC_DefinicionItems";

  explicit ItemDefinitionFile(ItemDefinitionServices services);

  /// Writes the file whole, then shows the success message. When anything fails, no file is written and one that was
  /// there before stays as it was. `multipleAreas`: the device counts by areas. `receiving`: only deposits that take
  /// goods in are listed. Throws nothing.
  ItemDefinitionResult Write(std::string_view path, bool multipleAreas, bool receiving);

 private:
  ItemDefinitionResult TryToWrite(std::string_view path, bool multipleAreas, bool receiving);
  void Save(clsDatosTransporteXMLSalida& document, std::string_view path);

  ItemDefinitionServices services_;
};

}  // namespace tolvan

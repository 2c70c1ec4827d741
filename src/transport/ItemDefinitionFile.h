// Writes what the collector device must know of the store, its items, barcodes and deposits, to one transport file.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

#include "host/DatabaseServices.h"
#include "host/FileHelper.h"
#include "host/SqlStatement.h"
#include "host/UserInterface.h"
#include "services/ActionReport.h"

namespace tolvan {

class basComponenteXML;
class clsCallBackProgreso;
class clsDatosTransporteXMLSalida;
struct ComponentContext;

/// What the device is to do, by the index of its option button (opProposito).
enum class CollectorPurpose : int {
  Receiving = 0,  ///< "Tomas para recepción de mercancía.": only deposits that take goods in are listed
  Count = 1,      ///< "Conteo físico de inventario por áreas.": the device counts by areas, in every ordinary deposit
};

enum class ItemDefinitionOutcome {
  Written,
  NoXmlLibrary,    ///< the user was told in a box
  QueryNotOpened,  ///< stopped silently: no box was shown, nor is one to be
  Failed,          ///< anything later: reading, building or saving failed, or the user interrupted
};

/// The details of the action's report.
struct ItemDefinitionResult {
  ItemDefinitionOutcome outcome = ItemDefinitionOutcome::Failed;
  std::string instance{};  ///< the identifier of the document
  std::size_t items = 0;
  std::size_t barcodes = 0;
  std::size_t deposits = 0;
};

/// What the writer works on; all of it outlives the writer.
struct ItemDefinitionServices {
  DatabaseServices& database;
  FileHelper& files;
  Dialogs& dialogs;
  const Interruption& interruption;
  basComponenteXML& xml;
  std::string productName;                  ///< title of the success message
  clsCallBackProgreso* progress = nullptr;  ///< its value is the number of rows read; how many there are is not known
};

/// Those of the host, without progress. Opens the database at the first call; throws HostError when it cannot.
ItemDefinitionServices CollectorServices(const ComponentContext& context, basComponenteXML& xml);

class ItemDefinitionFile {
 public:
  static constexpr std::string_view documentClass = "DC_DefinicionItems";

  explicit ItemDefinitionFile(ItemDefinitionServices services);

  /// Writes the file whole, then shows the success message. When anything fails, no file is written, one that was there
  /// before stays as it was, and the report says why. Its details are an ItemDefinitionResult. Throws nothing.
  ActionReport Write(std::string_view path, CollectorPurpose purpose);

 private:
  ItemDefinitionOutcome TryToWrite(std::string_view path, CollectorPurpose purpose, ItemDefinitionResult& result,
                                   std::string& error);
  void Save(clsDatosTransporteXMLSalida& document, std::string_view path);

  ItemDefinitionServices services_;
};

// The queries of the file. Their blanks are those that the servers' logs have always shown.

/// Principal units of visible, active items of type 0: idItem, idUnidad, Descripcion, RequiereSeriales,
/// RequerirReglasSeriales.
SqlStatement CollectorItemsQuery();

/// Every barcode of those items, of any unit: idItem, Barcode, idUnidad.
SqlStatement CollectorBarcodesQuery();

/// idDeposito of the ordinary deposits; with `receiving` only of those that take goods in.
SqlStatement CollectorDepositsQuery(bool receiving);

}  // namespace tolvan

// The three queries of the collector's item-definition file. The blanks are those that the servers' logs have always
// shown.
#pragma once

#include "host/SqlStatement.h"

namespace tolvan {

/// Principal units of visible, active items of type 0: idItem, idUnidad, Descripcion, RequiereSeriales,
/// RequerirReglasSeriales.
SqlStatement CollectorItemsQuery();

/// Every barcode of those items, of any unit: idItem, Barcode, idUnidad.
SqlStatement CollectorBarcodesQuery();

/// idDeposito of the ordinary deposits; with `receiving` only of those that take goods in.
SqlStatement CollectorDepositsQuery(bool receiving);

}  // namespace tolvan

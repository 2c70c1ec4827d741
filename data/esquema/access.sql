-- The host's tables on Access, in the SQL that its ODBC driver takes, statement by statement, into an empty file. Jet
-- has no IF NOT EXISTS: run again, the first statement fails and nothing is changed.
--
-- Booleans are YESNO (never null, False unless told), money is CURRENCY, texts compare without regard to case by
-- themselves. What this driver's SQL cannot say is kept by the programs that write:
-- - DEFAULT and CHECK: columns with a default elsewhere may be null here, and the component writes them always.
-- - filtered indexes: one principal unit for each item, one general tax rate, and at most one open batch for each
--   company and site. The upload flow looks for an open batch inside the transaction in which it opens one; two programs
--   that do so in the same instant are told apart by nothing, so on Access one station at a time uploads.

CREATE TABLE Ventas (
  idVenta          LONG     NOT NULL CONSTRAINT VentasClave PRIMARY KEY,
  idCompania       LONG     NOT NULL,
  FechaValidacion  DATETIME,
  VentaRealizada   YESNO,
  Anulado          YESNO,
  SubTotal         CURRENCY,
  Descuentos       CURRENCY,
  OtroDescuento    CURRENCY,
  Impuestos        CURRENCY,
  GranTotal        CURRENCY
);

-- Jet visits the table for every sale of the day, so that further columns in the index would help nothing.
CREATE INDEX VentasPorFecha ON Ventas (FechaValidacion);

CREATE TABLE Clientes (
  idCliente          TEXT(20)  NOT NULL CONSTRAINT ClientesClave PRIMARY KEY,
  Descripcion        TEXT(125) NOT NULL,
  RIF                TEXT(20),
  TipoCliente        LONG,
  PersoneriaCliente  LONG,
  Activo             YESNO
);

CREATE TABLE Marcas (
  idMarca      TEXT(12) NOT NULL CONSTRAINT MarcasClave PRIMARY KEY,
  Descripcion  TEXT(125)
);

CREATE TABLE Departamentos (
  idDepartamento          TEXT(12) NOT NULL CONSTRAINT DepartamentosClave PRIMARY KEY,
  Descripcion             TEXT(125),
  RequerirSeriales        YESNO,
  RequerirReglasSeriales  MEMO
);

-- Tasa is a fraction: 0.18 for eighteen per cent. One class is the general rate.
CREATE TABLE Impuestos (
  ClaseI       LONG NOT NULL CONSTRAINT ImpuestosClave PRIMARY KEY,
  Descripcion  TEXT(125),
  Tasa         DOUBLE NOT NULL,
  EsGeneral    YESNO
);

-- FactorConversion is how many units of the store's currency one unit of this currency costs.
CREATE TABLE Monedas (
  idMoneda          TEXT(12) NOT NULL CONSTRAINT MonedasClave PRIMARY KEY,
  Descripcion       TEXT(125),
  FactorConversion  DOUBLE NOT NULL,
  MonedaExtranjera  YESNO
);

CREATE TABLE Unidades (
  idUnidad     TEXT(12) NOT NULL CONSTRAINT UnidadesClave PRIMARY KEY,
  Descripcion  TEXT(125)
);

CREATE TABLE Items (
  idItem             TEXT(14) NOT NULL CONSTRAINT ItemsClave PRIMARY KEY,
  Descripcion        TEXT(125),
  idMarca            TEXT(12) NOT NULL CONSTRAINT ItemsMarca REFERENCES Marcas (idMarca),
  idDepartamento     TEXT(12) NOT NULL CONSTRAINT ItemsDepartamento REFERENCES Departamentos (idDepartamento),
  ClaseI             LONG,
  Exento             YESNO,
  Oculto             YESNO,
  Activo             YESNO,
  TipoItem           LONG,
  RequiereSeriales   YESNO,
  MD5OrigenImportar  TEXT(32)
);

CREATE INDEX ItemsPorOrigen ON Items (MD5OrigenImportar) WITH IGNORE NULL;

CREATE TABLE ItemsUnidades (
  idItem                TEXT(14) NOT NULL CONSTRAINT ItemsUnidadesItem REFERENCES Items (idItem),
  idUnidad              TEXT(12) NOT NULL,
  EsPrincipal           YESNO,
  Multiplicador         LONG,
  SolicitarDescomponer  YESNO,
  CONSTRAINT ItemsUnidadesClave PRIMARY KEY (idItem, idUnidad)
);

CREATE TABLE ItemsUnidadesInv (
  idItem             TEXT(14) NOT NULL,
  idUnidad           TEXT(12) NOT NULL,
  Inv                LONG     NOT NULL,
  CostoActual        CURRENCY,
  CostoAnterior      CURRENCY,
  CostoActual_Ext    CURRENCY,
  CostoAnterior_Ext  CURRENCY,
  CONSTRAINT ItemsUnidadesInvClave PRIMARY KEY (idItem, idUnidad, Inv),
  CONSTRAINT ItemsUnidadesInvUnidad FOREIGN KEY (idItem, idUnidad) REFERENCES ItemsUnidades (idItem, idUnidad)
);

CREATE TABLE Precios (
  idItem          TEXT(14) NOT NULL CONSTRAINT PreciosItem REFERENCES Items (idItem),
  idUnidad        TEXT(12) NOT NULL,
  idLista         TEXT(12) NOT NULL,
  Inv             LONG     NOT NULL,
  Precio          CURRENCY,
  PrecioAnterior  CURRENCY,
  Fijo            YESNO,
  CONSTRAINT PreciosClave PRIMARY KEY (idItem, idUnidad, idLista, Inv)
);

CREATE TABLE Depositos (
  idDeposito         TEXT(12) NOT NULL CONSTRAINT DepositosClave PRIMARY KEY,
  Descripcion        TEXT(125),
  Tipo               LONG,
  DisponibleEntrada  YESNO
);

CREATE TABLE Cantidades (
  idItem      TEXT(14) NOT NULL CONSTRAINT CantidadesItem REFERENCES Items (idItem),
  idUnidad    TEXT(12) NOT NULL,
  idDeposito  TEXT(12) NOT NULL CONSTRAINT CantidadesDeposito REFERENCES Depositos (idDeposito),
  Inv         LONG     NOT NULL,
  Cantidad    CURRENCY,
  CONSTRAINT CantidadesClave PRIMARY KEY (idItem, idUnidad, idDeposito, Inv)
);

CREATE TABLE Barcodes (
  Barcode   TEXT(50) NOT NULL CONSTRAINT BarcodesClave PRIMARY KEY,
  idItem    TEXT(14) NOT NULL CONSTRAINT BarcodesItem REFERENCES Items (idItem),
  idUnidad  TEXT(12) NOT NULL
);

CREATE INDEX BarcodesPorItem ON Barcodes (idItem);

CREATE TABLE LoteTransporteSubida (
  idLoteTransporte  COUNTER NOT NULL CONSTRAINT LoteClave PRIMARY KEY,
  idCompania        LONG    NOT NULL,
  idSedeCompania    LONG    NOT NULL,
  Cerrado           YESNO,
  FechaCierre       DATETIME
);

CREATE INDEX LotePorSede ON LoteTransporteSubida (idCompania, idSedeCompania);

CREATE VIEW VistaItemsUnidades AS
  SELECT IU.idItem, IU.idUnidad, IU.EsPrincipal, IU.Multiplicador, IU.SolicitarDescomponer, II.Inv,
         II.CostoActual, II.CostoAnterior, II.CostoActual_Ext, II.CostoAnterior_Ext
  FROM ItemsUnidades AS IU
  INNER JOIN ItemsUnidadesInv AS II ON (II.idItem = IU.idItem) AND (II.idUnidad = IU.idUnidad);

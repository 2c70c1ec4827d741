-- The host's tables on SQLite. Booleans are 0 and 1 in columns declared BOOLEAN, dates are ISO text
-- ('2024-01-31 09:30:00'), money is NUMERIC. Codes of items, brands, departments, units and lists compare without
-- regard to case. Safe to run again: what is there already stays.

CREATE TABLE IF NOT EXISTS Ventas (
  idVenta          INTEGER  NOT NULL PRIMARY KEY,
  idCompania       INTEGER  NOT NULL,
  FechaValidacion  DATETIME CHECK (FechaValidacion IS NULL OR FechaValidacion LIKE '____-__-__ __:__:__'),
  VentaRealizada   BOOLEAN  NOT NULL DEFAULT 0 CHECK (VentaRealizada IN (0, 1)),
  Anulado          BOOLEAN  NOT NULL DEFAULT 0 CHECK (Anulado IN (0, 1)),
  SubTotal         NUMERIC  NOT NULL DEFAULT 0,
  Descuentos       NUMERIC  NOT NULL DEFAULT 0,
  OtroDescuento    NUMERIC  NOT NULL DEFAULT 0,
  Impuestos        NUMERIC  NOT NULL DEFAULT 0,
  GranTotal        NUMERIC  NOT NULL DEFAULT 0
);

-- Every column that the totals of a day ask for, so that a day is one stretch of this index and no visit to the table.
CREATE INDEX IF NOT EXISTS VentasPorFecha ON Ventas (
  FechaValidacion, VentaRealizada, Anulado, GranTotal, Impuestos, idCompania, SubTotal, Descuentos, OtroDescuento);

CREATE TABLE IF NOT EXISTS Clientes (
  idCliente          TEXT    NOT NULL PRIMARY KEY,
  Descripcion        TEXT    NOT NULL CHECK (length(Descripcion) <= 125),
  RIF                TEXT    NOT NULL DEFAULT '',
  TipoCliente        INTEGER NOT NULL DEFAULT 0,
  PersoneriaCliente  INTEGER NOT NULL DEFAULT 0,
  Activo             BOOLEAN NOT NULL DEFAULT 1 CHECK (Activo IN (0, 1))
) WITHOUT ROWID;

CREATE TABLE IF NOT EXISTS Marcas (
  idMarca      TEXT NOT NULL COLLATE NOCASE PRIMARY KEY CHECK (length(idMarca) BETWEEN 1 AND 12),
  Descripcion  TEXT NOT NULL DEFAULT ''
) WITHOUT ROWID;

CREATE TABLE IF NOT EXISTS Departamentos (
  idDepartamento          TEXT    NOT NULL COLLATE NOCASE PRIMARY KEY CHECK (length(idDepartamento) BETWEEN 1 AND 12),
  Descripcion             TEXT    NOT NULL DEFAULT '',
  RequerirSeriales        BOOLEAN NOT NULL DEFAULT 0 CHECK (RequerirSeriales IN (0, 1)),
  RequerirReglasSeriales  TEXT
) WITHOUT ROWID;

-- Tasa is a fraction: 0.18 for eighteen per cent. One class is the general rate.
CREATE TABLE IF NOT EXISTS Impuestos (
  ClaseI       INTEGER NOT NULL PRIMARY KEY,
  Descripcion  TEXT    NOT NULL DEFAULT '',
  Tasa         NUMERIC NOT NULL CHECK (Tasa >= 0),
  EsGeneral    BOOLEAN NOT NULL DEFAULT 0 CHECK (EsGeneral IN (0, 1))
);

CREATE UNIQUE INDEX IF NOT EXISTS ImpuestoGeneral ON Impuestos (EsGeneral) WHERE EsGeneral = 1;

-- FactorConversion is how many units of the store's currency one unit of this currency costs.
CREATE TABLE IF NOT EXISTS Monedas (
  idMoneda          TEXT    NOT NULL COLLATE NOCASE PRIMARY KEY,
  Descripcion       TEXT    NOT NULL DEFAULT '',
  FactorConversion  NUMERIC NOT NULL DEFAULT 1 CHECK (FactorConversion > 0),
  MonedaExtranjera  BOOLEAN NOT NULL DEFAULT 0 CHECK (MonedaExtranjera IN (0, 1))
) WITHOUT ROWID;

CREATE TABLE IF NOT EXISTS Unidades (
  idUnidad     TEXT NOT NULL COLLATE NOCASE PRIMARY KEY CHECK (length(idUnidad) BETWEEN 1 AND 12),
  Descripcion  TEXT NOT NULL DEFAULT ''
) WITHOUT ROWID;

CREATE TABLE IF NOT EXISTS Items (
  idItem             TEXT    NOT NULL COLLATE NOCASE PRIMARY KEY CHECK (length(idItem) BETWEEN 1 AND 14),
  Descripcion        TEXT    CHECK (length(Descripcion) <= 125),
  idMarca            TEXT    NOT NULL COLLATE NOCASE REFERENCES Marcas (idMarca),
  idDepartamento     TEXT    NOT NULL COLLATE NOCASE REFERENCES Departamentos (idDepartamento),
  ClaseI             INTEGER NOT NULL DEFAULT 1,
  Exento             BOOLEAN NOT NULL DEFAULT 0 CHECK (Exento IN (0, 1)),
  Oculto             BOOLEAN NOT NULL DEFAULT 0 CHECK (Oculto IN (0, 1)),
  Activo             BOOLEAN NOT NULL DEFAULT 1 CHECK (Activo IN (0, 1)),
  TipoItem           INTEGER NOT NULL DEFAULT 0,
  RequiereSeriales   BOOLEAN NOT NULL DEFAULT 0 CHECK (RequiereSeriales IN (0, 1)),
  MD5OrigenImportar  TEXT    CHECK (length(MD5OrigenImportar) = 32)
);

CREATE INDEX IF NOT EXISTS ItemsPorOrigen ON Items (MD5OrigenImportar) WHERE MD5OrigenImportar IS NOT NULL;

CREATE TABLE IF NOT EXISTS ItemsUnidades (
  idItem                TEXT    NOT NULL COLLATE NOCASE REFERENCES Items (idItem),
  idUnidad              TEXT    NOT NULL COLLATE NOCASE CHECK (length(idUnidad) BETWEEN 1 AND 12),
  EsPrincipal           BOOLEAN NOT NULL DEFAULT 0 CHECK (EsPrincipal IN (0, 1)),
  Multiplicador         INTEGER NOT NULL DEFAULT 1 CHECK (Multiplicador >= 1),
  SolicitarDescomponer  BOOLEAN NOT NULL DEFAULT 0 CHECK (SolicitarDescomponer IN (0, 1)),
  PRIMARY KEY (idItem, idUnidad)
) WITHOUT ROWID;

CREATE UNIQUE INDEX IF NOT EXISTS UnidadPrincipal ON ItemsUnidades (idItem) WHERE EsPrincipal = 1;

CREATE TABLE IF NOT EXISTS ItemsUnidadesInv (
  idItem             TEXT    NOT NULL COLLATE NOCASE,
  idUnidad           TEXT    NOT NULL COLLATE NOCASE,
  Inv                INTEGER NOT NULL,
  CostoActual        NUMERIC NOT NULL DEFAULT 0,
  CostoAnterior      NUMERIC NOT NULL DEFAULT 0,
  CostoActual_Ext    NUMERIC NOT NULL DEFAULT 0,
  CostoAnterior_Ext  NUMERIC NOT NULL DEFAULT 0,
  PRIMARY KEY (idItem, idUnidad, Inv),
  FOREIGN KEY (idItem, idUnidad) REFERENCES ItemsUnidades (idItem, idUnidad)
) WITHOUT ROWID;

CREATE TABLE IF NOT EXISTS Precios (
  idItem          TEXT    NOT NULL COLLATE NOCASE REFERENCES Items (idItem),
  idUnidad        TEXT    NOT NULL COLLATE NOCASE,
  idLista         TEXT    NOT NULL COLLATE NOCASE,
  Inv             INTEGER NOT NULL,
  Precio          NUMERIC,
  PrecioAnterior  NUMERIC,
  Fijo            BOOLEAN NOT NULL DEFAULT 0 CHECK (Fijo IN (0, 1)),
  PRIMARY KEY (idItem, idUnidad, idLista, Inv)
) WITHOUT ROWID;

CREATE TABLE IF NOT EXISTS Depositos (
  idDeposito         TEXT    NOT NULL COLLATE NOCASE PRIMARY KEY,
  Descripcion        TEXT    NOT NULL DEFAULT '',
  Tipo               INTEGER NOT NULL DEFAULT 0,
  DisponibleEntrada  BOOLEAN NOT NULL DEFAULT 1 CHECK (DisponibleEntrada IN (0, 1))
) WITHOUT ROWID;

CREATE TABLE IF NOT EXISTS Cantidades (
  idItem      TEXT    NOT NULL COLLATE NOCASE REFERENCES Items (idItem),
  idUnidad    TEXT    NOT NULL COLLATE NOCASE,
  idDeposito  TEXT    NOT NULL COLLATE NOCASE REFERENCES Depositos (idDeposito),
  Inv         INTEGER NOT NULL,
  Cantidad    NUMERIC NOT NULL DEFAULT 0,
  PRIMARY KEY (idItem, idUnidad, idDeposito, Inv)
) WITHOUT ROWID;

CREATE TABLE IF NOT EXISTS Barcodes (
  Barcode   TEXT NOT NULL PRIMARY KEY,
  idItem    TEXT NOT NULL COLLATE NOCASE REFERENCES Items (idItem),
  idUnidad  TEXT NOT NULL COLLATE NOCASE
) WITHOUT ROWID;

-- With the unit, so that a list of barcodes by item needs no visit to the table.
CREATE INDEX IF NOT EXISTS BarcodesPorItem ON Barcodes (idItem, idUnidad);

CREATE TABLE IF NOT EXISTS LoteTransporteSubida (
  idLoteTransporte  INTEGER  NOT NULL PRIMARY KEY AUTOINCREMENT,
  idCompania        INTEGER  NOT NULL,
  idSedeCompania    INTEGER  NOT NULL,
  Cerrado           BOOLEAN  NOT NULL DEFAULT 0 CHECK (Cerrado IN (0, 1)),
  FechaCierre       DATETIME
);

-- At most one open batch per company and site, also when two programs open one at the same moment.
CREATE UNIQUE INDEX IF NOT EXISTS LoteAbierto ON LoteTransporteSubida (idCompania, idSedeCompania) WHERE Cerrado = 0;

CREATE VIEW IF NOT EXISTS VistaItemsUnidades AS
  SELECT IU.idItem, IU.idUnidad, IU.EsPrincipal, IU.Multiplicador, IU.SolicitarDescomponer, II.Inv,
         II.CostoActual, II.CostoAnterior, II.CostoActual_Ext, II.CostoAnterior_Ext
  FROM ItemsUnidades IU
  INNER JOIN ItemsUnidadesInv II ON II.idItem = IU.idItem AND II.idUnidad = IU.idUnidad;

-- The host's tables on PostgreSQL 12 or later, built with ICU (as every packaged server is). The same tables, keys,
-- checks and indexes as sqlite.sql. Safe to run again: what is there already stays.
--
-- Booleans are SMALLINT 0 and 1, so that comparisons with a number ("Cerrado=0", "Activo<>1") hold here too. Money is
-- NUMERIC(19,4), dates are TIMESTAMP(0) without a time zone.
--
-- Codes compare without regard to case through the collation codigo_sin_mayusculas of their columns. It was preferred to
-- the type citext because a collation belongs to the column: it holds whatever type a driver gives a bound value, while
-- citext = text falls back to comparing with case. Every key, foreign key and join of codes uses the same collation on
-- both sides, as PostgreSQL asks. What it costs: LIKE on such a column needs an explicit COLLATE "C".

CREATE COLLATION IF NOT EXISTS codigo_sin_mayusculas (
  provider = icu, locale = 'und-u-ks-level2', deterministic = false);

CREATE TABLE IF NOT EXISTS Ventas (
  idVenta          INTEGER       NOT NULL PRIMARY KEY,
  idCompania       INTEGER       NOT NULL,
  FechaValidacion  TIMESTAMP(0),
  VentaRealizada   SMALLINT      NOT NULL DEFAULT 0 CHECK (VentaRealizada IN (0, 1)),
  Anulado          SMALLINT      NOT NULL DEFAULT 0 CHECK (Anulado IN (0, 1)),
  SubTotal         NUMERIC(19,4) NOT NULL DEFAULT 0,
  Descuentos       NUMERIC(19,4) NOT NULL DEFAULT 0,
  OtroDescuento    NUMERIC(19,4) NOT NULL DEFAULT 0,
  Impuestos        NUMERIC(19,4) NOT NULL DEFAULT 0,
  GranTotal        NUMERIC(19,4) NOT NULL DEFAULT 0
);

-- Every column that the totals of a day ask for, so that a day is one stretch of this index and, on vacuumed pages, no
-- visit to the table.
CREATE INDEX IF NOT EXISTS VentasPorFecha ON Ventas (FechaValidacion) INCLUDE (
  VentaRealizada, Anulado, GranTotal, Impuestos, idCompania, SubTotal, Descuentos, OtroDescuento, idVenta);

CREATE TABLE IF NOT EXISTS Clientes (
  idCliente          VARCHAR(20)  NOT NULL PRIMARY KEY,
  Descripcion        VARCHAR(125) NOT NULL,
  RIF                VARCHAR(20)  NOT NULL DEFAULT '',
  TipoCliente        INTEGER      NOT NULL DEFAULT 0,
  PersoneriaCliente  INTEGER      NOT NULL DEFAULT 0,
  Activo             SMALLINT     NOT NULL DEFAULT 1 CHECK (Activo IN (0, 1))
);

CREATE TABLE IF NOT EXISTS Marcas (
  idMarca      VARCHAR(12) COLLATE codigo_sin_mayusculas NOT NULL PRIMARY KEY CHECK (length(idMarca) >= 1),
  Descripcion  VARCHAR(125) NOT NULL DEFAULT ''
);

CREATE TABLE IF NOT EXISTS Departamentos (
  idDepartamento          VARCHAR(12) COLLATE codigo_sin_mayusculas NOT NULL PRIMARY KEY
                          CHECK (length(idDepartamento) >= 1),
  Descripcion             VARCHAR(125) NOT NULL DEFAULT '',
  RequerirSeriales        SMALLINT     NOT NULL DEFAULT 0 CHECK (RequerirSeriales IN (0, 1)),
  RequerirReglasSeriales  TEXT
);

-- Tasa is a fraction: 0.18 for eighteen per cent. One class is the general rate.
CREATE TABLE IF NOT EXISTS Impuestos (
  ClaseI       INTEGER      NOT NULL PRIMARY KEY,
  Descripcion  VARCHAR(125) NOT NULL DEFAULT '',
  Tasa         NUMERIC(9,6) NOT NULL CHECK (Tasa >= 0),
  EsGeneral    SMALLINT     NOT NULL DEFAULT 0 CHECK (EsGeneral IN (0, 1))
);

CREATE UNIQUE INDEX IF NOT EXISTS ImpuestoGeneral ON Impuestos (EsGeneral) WHERE EsGeneral = 1;

-- FactorConversion is how many units of the store's currency one unit of this currency costs.
CREATE TABLE IF NOT EXISTS Monedas (
  idMoneda          VARCHAR(12) COLLATE codigo_sin_mayusculas NOT NULL PRIMARY KEY,
  Descripcion       VARCHAR(125)  NOT NULL DEFAULT '',
  FactorConversion  NUMERIC(19,6) NOT NULL DEFAULT 1 CHECK (FactorConversion > 0),
  MonedaExtranjera  SMALLINT      NOT NULL DEFAULT 0 CHECK (MonedaExtranjera IN (0, 1))
);

CREATE TABLE IF NOT EXISTS Unidades (
  idUnidad     VARCHAR(12) COLLATE codigo_sin_mayusculas NOT NULL PRIMARY KEY CHECK (length(idUnidad) >= 1),
  Descripcion  VARCHAR(125) NOT NULL DEFAULT ''
);

CREATE TABLE IF NOT EXISTS Items (
  idItem             VARCHAR(14) COLLATE codigo_sin_mayusculas NOT NULL PRIMARY KEY CHECK (length(idItem) >= 1),
  Descripcion        VARCHAR(125),
  idMarca            VARCHAR(12) COLLATE codigo_sin_mayusculas NOT NULL REFERENCES Marcas (idMarca),
  idDepartamento     VARCHAR(12) COLLATE codigo_sin_mayusculas NOT NULL REFERENCES Departamentos (idDepartamento),
  ClaseI             INTEGER  NOT NULL DEFAULT 1,
  Exento             SMALLINT NOT NULL DEFAULT 0 CHECK (Exento IN (0, 1)),
  Oculto             SMALLINT NOT NULL DEFAULT 0 CHECK (Oculto IN (0, 1)),
  Activo             SMALLINT NOT NULL DEFAULT 1 CHECK (Activo IN (0, 1)),
  TipoItem           INTEGER  NOT NULL DEFAULT 0,
  RequiereSeriales   SMALLINT NOT NULL DEFAULT 0 CHECK (RequiereSeriales IN (0, 1)),
  MD5OrigenImportar  VARCHAR(32) CHECK (length(MD5OrigenImportar) = 32)
);

CREATE INDEX IF NOT EXISTS ItemsPorOrigen ON Items (MD5OrigenImportar) WHERE MD5OrigenImportar IS NOT NULL;

CREATE TABLE IF NOT EXISTS ItemsUnidades (
  idItem                VARCHAR(14) COLLATE codigo_sin_mayusculas NOT NULL REFERENCES Items (idItem),
  idUnidad              VARCHAR(12) COLLATE codigo_sin_mayusculas NOT NULL CHECK (length(idUnidad) >= 1),
  EsPrincipal           SMALLINT NOT NULL DEFAULT 0 CHECK (EsPrincipal IN (0, 1)),
  Multiplicador         INTEGER  NOT NULL DEFAULT 1 CHECK (Multiplicador >= 1),
  SolicitarDescomponer  SMALLINT NOT NULL DEFAULT 0 CHECK (SolicitarDescomponer IN (0, 1)),
  PRIMARY KEY (idItem, idUnidad)
);

CREATE UNIQUE INDEX IF NOT EXISTS UnidadPrincipal ON ItemsUnidades (idItem) WHERE EsPrincipal = 1;

CREATE TABLE IF NOT EXISTS ItemsUnidadesInv (
  idItem             VARCHAR(14) COLLATE codigo_sin_mayusculas NOT NULL,
  idUnidad           VARCHAR(12) COLLATE codigo_sin_mayusculas NOT NULL,
  Inv                INTEGER       NOT NULL,
  CostoActual        NUMERIC(19,4) NOT NULL DEFAULT 0,
  CostoAnterior      NUMERIC(19,4) NOT NULL DEFAULT 0,
  CostoActual_Ext    NUMERIC(19,4) NOT NULL DEFAULT 0,
  CostoAnterior_Ext  NUMERIC(19,4) NOT NULL DEFAULT 0,
  PRIMARY KEY (idItem, idUnidad, Inv),
  FOREIGN KEY (idItem, idUnidad) REFERENCES ItemsUnidades (idItem, idUnidad)
);

CREATE TABLE IF NOT EXISTS Precios (
  idItem          VARCHAR(14) COLLATE codigo_sin_mayusculas NOT NULL REFERENCES Items (idItem),
  idUnidad        VARCHAR(12) COLLATE codigo_sin_mayusculas NOT NULL,
  idLista         VARCHAR(12) COLLATE codigo_sin_mayusculas NOT NULL,
  Inv             INTEGER       NOT NULL,
  Precio          NUMERIC(19,4),
  PrecioAnterior  NUMERIC(19,4),
  Fijo            SMALLINT      NOT NULL DEFAULT 0 CHECK (Fijo IN (0, 1)),
  PRIMARY KEY (idItem, idUnidad, idLista, Inv)
);

CREATE TABLE IF NOT EXISTS Depositos (
  idDeposito         VARCHAR(12) COLLATE codigo_sin_mayusculas NOT NULL PRIMARY KEY,
  Descripcion        VARCHAR(125) NOT NULL DEFAULT '',
  Tipo               INTEGER      NOT NULL DEFAULT 0,
  DisponibleEntrada  SMALLINT     NOT NULL DEFAULT 1 CHECK (DisponibleEntrada IN (0, 1))
);

CREATE TABLE IF NOT EXISTS Cantidades (
  idItem      VARCHAR(14) COLLATE codigo_sin_mayusculas NOT NULL REFERENCES Items (idItem),
  idUnidad    VARCHAR(12) COLLATE codigo_sin_mayusculas NOT NULL,
  idDeposito  VARCHAR(12) COLLATE codigo_sin_mayusculas NOT NULL REFERENCES Depositos (idDeposito),
  Inv         INTEGER       NOT NULL,
  Cantidad    NUMERIC(19,4) NOT NULL DEFAULT 0,
  PRIMARY KEY (idItem, idUnidad, idDeposito, Inv)
);

CREATE TABLE IF NOT EXISTS Barcodes (
  Barcode   VARCHAR(50) NOT NULL PRIMARY KEY,
  idItem    VARCHAR(14) COLLATE codigo_sin_mayusculas NOT NULL REFERENCES Items (idItem),
  idUnidad  VARCHAR(12) COLLATE codigo_sin_mayusculas NOT NULL
);

CREATE INDEX IF NOT EXISTS BarcodesPorItem ON Barcodes (idItem);

CREATE TABLE IF NOT EXISTS LoteTransporteSubida (
  idLoteTransporte  INTEGER  GENERATED BY DEFAULT AS IDENTITY PRIMARY KEY,
  idCompania        INTEGER  NOT NULL,
  idSedeCompania    INTEGER  NOT NULL,
  Cerrado           SMALLINT NOT NULL DEFAULT 0 CHECK (Cerrado IN (0, 1)),
  FechaCierre       TIMESTAMP(0)
);

-- At most one open batch per company and site, also when two programs open one at the same moment.
CREATE UNIQUE INDEX IF NOT EXISTS LoteAbierto ON LoteTransporteSubida (idCompania, idSedeCompania) WHERE Cerrado = 0;

CREATE OR REPLACE VIEW VistaItemsUnidades AS
  SELECT IU.idItem, IU.idUnidad, IU.EsPrincipal, IU.Multiplicador, IU.SolicitarDescomponer, II.Inv,
         II.CostoActual, II.CostoAnterior, II.CostoActual_Ext, II.CostoAnterior_Ext
  FROM ItemsUnidades IU
  INNER JOIN ItemsUnidadesInv II ON II.idItem = IU.idItem AND II.idUnidad = IU.idUnidad;

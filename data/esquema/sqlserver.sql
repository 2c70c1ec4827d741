-- The host's tables on SQL Server 2008 or later. The same tables, keys, checks and indexes as sqlite.sql. Safe to run
-- again: what is there already stays. Every statement is a batch of its own; there is no GO.
--
-- Booleans are BIT, money is DECIMAL(19,4), because a division of MONEY loses digits on the way. Codes carry a
-- collation of their own without regard to case, so that they compare alike whatever the server's default is.
-- A filtered index asks for QUOTED_IDENTIFIER and ANSI_NULLS, which ODBC turns on by itself.

IF OBJECT_ID(N'Ventas', N'U') IS NULL CREATE TABLE Ventas (
  idVenta          INTEGER       NOT NULL PRIMARY KEY,
  idCompania       INTEGER       NOT NULL,
  FechaValidacion  DATETIME,
  VentaRealizada   BIT           NOT NULL DEFAULT 0,
  Anulado          BIT           NOT NULL DEFAULT 0,
  SubTotal         DECIMAL(19,4) NOT NULL DEFAULT 0,
  Descuentos       DECIMAL(19,4) NOT NULL DEFAULT 0,
  OtroDescuento    DECIMAL(19,4) NOT NULL DEFAULT 0,
  Impuestos        DECIMAL(19,4) NOT NULL DEFAULT 0,
  GranTotal        DECIMAL(19,4) NOT NULL DEFAULT 0
);

-- Every column that the totals of a day ask for, so that a day is one stretch of this index and no visit to
-- the table. idVenta is in it as the key of the table.
IF INDEXPROPERTY(OBJECT_ID(N'Ventas'), N'VentasPorFecha', 'IndexID') IS NULL
  CREATE INDEX VentasPorFecha ON Ventas (FechaValidacion) INCLUDE (
  VentaRealizada, Anulado, GranTotal, Impuestos, idCompania, SubTotal, Descuentos, OtroDescuento);

IF OBJECT_ID(N'Clientes', N'U') IS NULL CREATE TABLE Clientes (
  idCliente          NVARCHAR(20)  NOT NULL PRIMARY KEY,
  Descripcion        NVARCHAR(125) NOT NULL,
  RIF                NVARCHAR(20)  NOT NULL DEFAULT '',
  TipoCliente        INTEGER       NOT NULL DEFAULT 0,
  PersoneriaCliente  INTEGER       NOT NULL DEFAULT 0,
  Activo             BIT           NOT NULL DEFAULT 1
);

IF OBJECT_ID(N'Marcas', N'U') IS NULL CREATE TABLE Marcas (
  idMarca      NVARCHAR(12) COLLATE Modern_Spanish_CI_AS NOT NULL PRIMARY KEY CHECK (LEN(idMarca) >= 1),
  Descripcion  NVARCHAR(125) NOT NULL DEFAULT ''
);

IF OBJECT_ID(N'Departamentos', N'U') IS NULL CREATE TABLE Departamentos (
  idDepartamento          NVARCHAR(12) COLLATE Modern_Spanish_CI_AS NOT NULL PRIMARY KEY
                          CHECK (LEN(idDepartamento) >= 1),
  Descripcion             NVARCHAR(125) NOT NULL DEFAULT '',
  RequerirSeriales        BIT           NOT NULL DEFAULT 0,
  RequerirReglasSeriales  NVARCHAR(MAX)
);

-- Tasa is a fraction: 0.18 for eighteen per cent. One class is the general rate.
IF OBJECT_ID(N'Impuestos', N'U') IS NULL CREATE TABLE Impuestos (
  ClaseI       INTEGER       NOT NULL PRIMARY KEY,
  Descripcion  NVARCHAR(125) NOT NULL DEFAULT '',
  Tasa         DECIMAL(9,6)  NOT NULL CHECK (Tasa >= 0),
  EsGeneral    BIT           NOT NULL DEFAULT 0
);

IF INDEXPROPERTY(OBJECT_ID(N'Impuestos'), N'ImpuestoGeneral', 'IndexID') IS NULL
  CREATE UNIQUE INDEX ImpuestoGeneral ON Impuestos (EsGeneral) WHERE EsGeneral = 1;

-- FactorConversion is how many units of the store's currency one unit of this currency costs.
IF OBJECT_ID(N'Monedas', N'U') IS NULL CREATE TABLE Monedas (
  idMoneda          NVARCHAR(12) COLLATE Modern_Spanish_CI_AS NOT NULL PRIMARY KEY,
  Descripcion       NVARCHAR(125) NOT NULL DEFAULT '',
  FactorConversion  DECIMAL(19,6) NOT NULL DEFAULT 1 CHECK (FactorConversion > 0),
  MonedaExtranjera  BIT           NOT NULL DEFAULT 0
);

IF OBJECT_ID(N'Unidades', N'U') IS NULL CREATE TABLE Unidades (
  idUnidad     NVARCHAR(12) COLLATE Modern_Spanish_CI_AS NOT NULL PRIMARY KEY CHECK (LEN(idUnidad) >= 1),
  Descripcion  NVARCHAR(125) NOT NULL DEFAULT ''
);

IF OBJECT_ID(N'Items', N'U') IS NULL CREATE TABLE Items (
  idItem             NVARCHAR(14) COLLATE Modern_Spanish_CI_AS NOT NULL PRIMARY KEY CHECK (LEN(idItem) >= 1),
  Descripcion        NVARCHAR(125),
  idMarca            NVARCHAR(12) COLLATE Modern_Spanish_CI_AS NOT NULL REFERENCES Marcas (idMarca),
  idDepartamento     NVARCHAR(12) COLLATE Modern_Spanish_CI_AS NOT NULL REFERENCES Departamentos (idDepartamento),
  ClaseI             INTEGER       NOT NULL DEFAULT 1,
  Exento             BIT           NOT NULL DEFAULT 0,
  Oculto             BIT           NOT NULL DEFAULT 0,
  Activo             BIT           NOT NULL DEFAULT 1,
  TipoItem           INTEGER       NOT NULL DEFAULT 0,
  RequiereSeriales   BIT           NOT NULL DEFAULT 0,
  MD5OrigenImportar  NVARCHAR(32)  CHECK (LEN(MD5OrigenImportar) = 32)
);

IF INDEXPROPERTY(OBJECT_ID(N'Items'), N'ItemsPorOrigen', 'IndexID') IS NULL
  CREATE INDEX ItemsPorOrigen ON Items (MD5OrigenImportar) WHERE MD5OrigenImportar IS NOT NULL;

IF OBJECT_ID(N'ItemsUnidades', N'U') IS NULL CREATE TABLE ItemsUnidades (
  idItem                NVARCHAR(14) COLLATE Modern_Spanish_CI_AS NOT NULL REFERENCES Items (idItem),
  idUnidad              NVARCHAR(12) COLLATE Modern_Spanish_CI_AS NOT NULL CHECK (LEN(idUnidad) >= 1),
  EsPrincipal           BIT     NOT NULL DEFAULT 0,
  Multiplicador         INTEGER NOT NULL DEFAULT 1 CHECK (Multiplicador >= 1),
  SolicitarDescomponer  BIT     NOT NULL DEFAULT 0,
  PRIMARY KEY (idItem, idUnidad)
);

IF INDEXPROPERTY(OBJECT_ID(N'ItemsUnidades'), N'UnidadPrincipal', 'IndexID') IS NULL
  CREATE UNIQUE INDEX UnidadPrincipal ON ItemsUnidades (idItem) WHERE EsPrincipal = 1;

IF OBJECT_ID(N'ItemsUnidadesInv', N'U') IS NULL CREATE TABLE ItemsUnidadesInv (
  idItem             NVARCHAR(14) COLLATE Modern_Spanish_CI_AS NOT NULL,
  idUnidad           NVARCHAR(12) COLLATE Modern_Spanish_CI_AS NOT NULL,
  Inv                INTEGER       NOT NULL,
  CostoActual        DECIMAL(19,4) NOT NULL DEFAULT 0,
  CostoAnterior      DECIMAL(19,4) NOT NULL DEFAULT 0,
  CostoActual_Ext    DECIMAL(19,4) NOT NULL DEFAULT 0,
  CostoAnterior_Ext  DECIMAL(19,4) NOT NULL DEFAULT 0,
  PRIMARY KEY (idItem, idUnidad, Inv),
  FOREIGN KEY (idItem, idUnidad) REFERENCES ItemsUnidades (idItem, idUnidad)
);

IF OBJECT_ID(N'Precios', N'U') IS NULL CREATE TABLE Precios (
  idItem          NVARCHAR(14) COLLATE Modern_Spanish_CI_AS NOT NULL REFERENCES Items (idItem),
  idUnidad        NVARCHAR(12) COLLATE Modern_Spanish_CI_AS NOT NULL,
  idLista         NVARCHAR(12) COLLATE Modern_Spanish_CI_AS NOT NULL,
  Inv             INTEGER       NOT NULL,
  Precio          DECIMAL(19,4),
  PrecioAnterior  DECIMAL(19,4),
  Fijo            BIT           NOT NULL DEFAULT 0,
  PRIMARY KEY (idItem, idUnidad, idLista, Inv)
);

IF OBJECT_ID(N'Depositos', N'U') IS NULL CREATE TABLE Depositos (
  idDeposito         NVARCHAR(12) COLLATE Modern_Spanish_CI_AS NOT NULL PRIMARY KEY,
  Descripcion        NVARCHAR(125) NOT NULL DEFAULT '',
  Tipo               INTEGER       NOT NULL DEFAULT 0,
  DisponibleEntrada  BIT           NOT NULL DEFAULT 1
);

IF OBJECT_ID(N'Cantidades', N'U') IS NULL CREATE TABLE Cantidades (
  idItem      NVARCHAR(14) COLLATE Modern_Spanish_CI_AS NOT NULL REFERENCES Items (idItem),
  idUnidad    NVARCHAR(12) COLLATE Modern_Spanish_CI_AS NOT NULL,
  idDeposito  NVARCHAR(12) COLLATE Modern_Spanish_CI_AS NOT NULL REFERENCES Depositos (idDeposito),
  Inv         INTEGER       NOT NULL,
  Cantidad    DECIMAL(19,4) NOT NULL DEFAULT 0,
  PRIMARY KEY (idItem, idUnidad, idDeposito, Inv)
);

IF OBJECT_ID(N'Barcodes', N'U') IS NULL CREATE TABLE Barcodes (
  Barcode   NVARCHAR(50) NOT NULL PRIMARY KEY,
  idItem    NVARCHAR(14) COLLATE Modern_Spanish_CI_AS NOT NULL REFERENCES Items (idItem),
  idUnidad  NVARCHAR(12) COLLATE Modern_Spanish_CI_AS NOT NULL
);

IF INDEXPROPERTY(OBJECT_ID(N'Barcodes'), N'BarcodesPorItem', 'IndexID') IS NULL
  CREATE INDEX BarcodesPorItem ON Barcodes (idItem);

IF OBJECT_ID(N'LoteTransporteSubida', N'U') IS NULL CREATE TABLE LoteTransporteSubida (
  idLoteTransporte  INTEGER  IDENTITY(1, 1) NOT NULL PRIMARY KEY,
  idCompania        INTEGER  NOT NULL,
  idSedeCompania    INTEGER  NOT NULL,
  Cerrado           BIT      NOT NULL DEFAULT 0,
  FechaCierre       DATETIME
);

-- At most one open batch per company and site, also when two programs open one at the same moment.
IF INDEXPROPERTY(OBJECT_ID(N'LoteTransporteSubida'), N'LoteAbierto', 'IndexID') IS NULL
  CREATE UNIQUE INDEX LoteAbierto ON LoteTransporteSubida (idCompania, idSedeCompania) WHERE Cerrado = 0;

IF OBJECT_ID(N'VistaItemsUnidades', N'V') IS NULL EXEC (N'
CREATE VIEW VistaItemsUnidades AS
  SELECT IU.idItem, IU.idUnidad, IU.EsPrincipal, IU.Multiplicador, IU.SolicitarDescomponer, II.Inv,
         II.CostoActual, II.CostoAnterior, II.CostoActual_Ext, II.CostoAnterior_Ext
  FROM ItemsUnidades IU
  INNER JOIN ItemsUnidadesInv II ON II.idItem = IU.idItem AND II.idUnidad = IU.idUnidad');

-- What the component needs of a database on SQL Server, and nothing more, as the role tolvan_impexp. Run it in the
-- store's database as its owner; it is safe to run again:
--
--   sqlcmd -d tienda -i sqlserver.sql
--
-- Then give the role to the user of tolvan.ini (before version 2012 by sp_addrolemember):
--
--   CREATE LOGIN tolvan WITH PASSWORD = '…'; CREATE USER tolvan FOR LOGIN tolvan;
--   ALTER ROLE tolvan_impexp ADD MEMBER tolvan;
--
-- The order "esquema --crear" makes tables and is for their owner. There is no GO: all of it is one batch.

IF DATABASE_PRINCIPAL_ID(N'tolvan_impexp') IS NULL CREATE ROLE tolvan_impexp;

-- Sales, prices, the collector's file and the batches are read. Of customers only whether a code is there, which asks
-- for the whole table here.
GRANT SELECT ON Ventas TO tolvan_impexp;
GRANT SELECT ON Clientes TO tolvan_impexp;
GRANT SELECT ON Impuestos TO tolvan_impexp;
GRANT SELECT ON Monedas TO tolvan_impexp;
GRANT SELECT ON Marcas TO tolvan_impexp;
GRANT SELECT ON Departamentos TO tolvan_impexp;
GRANT SELECT ON Items TO tolvan_impexp;
GRANT SELECT ON ItemsUnidades TO tolvan_impexp;
GRANT SELECT ON ItemsUnidadesInv TO tolvan_impexp;
GRANT SELECT ON Precios TO tolvan_impexp;
GRANT SELECT ON VistaItemsUnidades TO tolvan_impexp;
GRANT SELECT ON Barcodes TO tolvan_impexp;
GRANT SELECT ON Depositos TO tolvan_impexp;
GRANT SELECT ON LoteTransporteSubida TO tolvan_impexp;

-- The registry makes customers; the price lists make items and what belongs to them; a batch is opened.
GRANT INSERT ON Clientes TO tolvan_impexp;
GRANT INSERT ON Marcas TO tolvan_impexp;
GRANT INSERT ON Departamentos TO tolvan_impexp;
GRANT INSERT ON Items TO tolvan_impexp;
GRANT INSERT ON ItemsUnidades TO tolvan_impexp;
GRANT INSERT ON ItemsUnidadesInv TO tolvan_impexp;
GRANT INSERT ON Precios TO tolvan_impexp;
GRANT INSERT ON LoteTransporteSubida TO tolvan_impexp;

-- The price lists change costs and prices, and where an item came from; a batch is closed. Nothing is deleted.
GRANT UPDATE (CostoActual, CostoAnterior, CostoActual_Ext, CostoAnterior_Ext) ON ItemsUnidadesInv TO tolvan_impexp;
GRANT UPDATE (Precio, PrecioAnterior, Fijo) ON Precios TO tolvan_impexp;
GRANT UPDATE (MD5OrigenImportar) ON Items TO tolvan_impexp;
GRANT UPDATE (Cerrado, FechaCierre) ON LoteTransporteSubida TO tolvan_impexp;

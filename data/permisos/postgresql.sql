-- What the component needs of a database on PostgreSQL, and nothing more, as the role tolvan_impexp. Run it in the
-- store's database as the owner of the tables, who may create roles; it is safe to run again, and takes from the role
-- whatever else it had been given:
--
--   psql -d tienda -f postgresql.sql
--
-- Then give the role to the user of tolvan.ini:
--
--   CREATE ROLE tolvan LOGIN PASSWORD '…' IN ROLE tolvan_impexp;
--
-- The order "esquema --crear" makes tables and is for their owner. Before version 15 everybody may create tables in the
-- schema public; REVOKE CREATE ON SCHEMA public FROM PUBLIC takes that away.

DO $$
BEGIN
  IF NOT EXISTS (SELECT FROM pg_roles WHERE rolname = 'tolvan_impexp') THEN
    CREATE ROLE tolvan_impexp NOLOGIN;
  END IF;
  EXECUTE format('GRANT CONNECT ON DATABASE %I TO tolvan_impexp', current_database());
END
$$;

GRANT USAGE ON SCHEMA public TO tolvan_impexp;
REVOKE ALL ON ALL TABLES IN SCHEMA public FROM tolvan_impexp;

-- Sales, prices, the collector's file and the batches are read. Of customers only whether a code is there.
GRANT SELECT ON Ventas, Impuestos, Monedas, Marcas, Departamentos, Items, ItemsUnidades, ItemsUnidadesInv, Precios,
  VistaItemsUnidades, Barcodes, Depositos, LoteTransporteSubida TO tolvan_impexp;
GRANT SELECT (idCliente) ON Clientes TO tolvan_impexp;

-- The registry makes customers; the price lists make items and what belongs to them; a batch is opened.
GRANT INSERT ON Clientes, Marcas, Departamentos, Items, ItemsUnidades, ItemsUnidadesInv, Precios,
  LoteTransporteSubida TO tolvan_impexp;

-- The price lists change costs and prices, and where an item came from; a batch is closed. Nothing is deleted.
GRANT UPDATE (CostoActual, CostoAnterior, CostoActual_Ext, CostoAnterior_Ext) ON ItemsUnidadesInv TO tolvan_impexp;
GRANT UPDATE (Precio, PrecioAnterior, Fijo) ON Precios TO tolvan_impexp;
GRANT UPDATE (MD5OrigenImportar) ON Items TO tolvan_impexp;
GRANT UPDATE (Cerrado, FechaCierre) ON LoteTransporteSubida TO tolvan_impexp;

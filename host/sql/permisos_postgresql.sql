-- Roles of those who work with the databases, with no more rights than their work needs. Run once by the owner
-- of the tables, after `atipicos crear`:
--     psql -d BASE -f host/sql/permisos_postgresql.sql
-- and then, for each person:
--     CREATE ROLE begona LOGIN PASSWORD '…' IN ROLE atipicos_puesto;

DO $$
BEGIN
    IF NOT EXISTS (SELECT 1 FROM pg_roles WHERE rolname = 'atipicos_consulta') THEN
        CREATE ROLE atipicos_consulta NOLOGIN;
    END IF;
    IF NOT EXISTS (SELECT 1 FROM pg_roles WHERE rolname = 'atipicos_puesto') THEN
        CREATE ROLE atipicos_puesto NOLOGIN IN ROLE atipicos_consulta;
    END IF;
END
$$;

-- Who only looks: listar, mostrar, imprimir, verificar.
GRANT USAGE ON SCHEMA orvalin, dbo TO atipicos_consulta;
GRANT SELECT ON ALL TABLES IN SCHEMA orvalin, dbo TO atipicos_consulta;

-- Who records charges. Entries are added, never changed: that is done in the accounting product.
GRANT INSERT, UPDATE, DELETE ON orvalin.Proveedores_Cargos_Atipicos, orvalin.Proveedores_Cargos_Atipicos_Lineas
    TO atipicos_puesto;
GRANT INSERT, UPDATE ON orvalin.Contador_Proveedores_Cargos_Atipicos, dbo.Contador_Asientos TO atipicos_puesto;
GRANT INSERT ON orvalin.Importaciones, dbo.Asientos, dbo.Apuntes, dbo.Registro_Impuestos, dbo.Previsiones
    TO atipicos_puesto;

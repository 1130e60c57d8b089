-- Roles of those who work with the databases, with no more rights than their work needs. Run after `atipicos crear`
-- with PostgreSQL's own client, which stops at the first error and then has changed nothing; it can be run again:
--     psql -d BASE -f permisos_postgresql.sql
-- It needs
--   - the owner of the tables, which is who ran `atipicos crear`, or a superuser
--   - who may make roles (CREATEROLE, or a superuser), unless all four are already on the server: roles are of the
--     whole server, so that the second database of a server can be done by its owner alone
-- and then, for each person, by who may make roles, and by the owner of the tables, who says which user that login is:
--     CREATE ROLE begona LOGIN PASSWORD '…' IN ROLE atipicos_puesto;
--     atipicos accesos begona 2 --conexion …

\set ON_ERROR_STOP on
BEGIN;

DO $$
DECLARE
    tablas int;
    ajenas text;
BEGIN
    SELECT COUNT(*), string_agg(DISTINCT pg_get_userbyid(c.relowner)::text, ', ')
                         FILTER (WHERE NOT pg_has_role(c.relowner, 'USAGE'))
        INTO tablas, ajenas
        FROM pg_class c JOIN pg_namespace n ON n.oid = c.relnamespace
        WHERE n.nspname IN ('orvalin', 'dbo') AND c.relkind = 'r';
    IF tablas = 0 THEN
        RAISE EXCEPTION 'En la base de datos «%» no están las tablas: ejecute antes atipicos crear.', current_database();
    END IF;
    IF ajenas IS NOT NULL THEN
        RAISE EXCEPTION 'Las tablas son de «%»: esto lo ejecuta él, o un superusuario, y no «%».', ajenas, current_user;
    END IF;
    IF NOT (SELECT rolsuper OR rolcreaterole FROM pg_roles WHERE rolname = current_user)
        AND (SELECT COUNT(*) FROM pg_roles
             WHERE rolname IN ('atipicos_consulta', 'atipicos_puesto', 'atipicos_suplencia', 'atipicos_historial')) < 4 THEN
        RAISE EXCEPTION '«%» no puede crear los papeles atipicos_consulta, atipicos_puesto, atipicos_suplencia y '
            'atipicos_historial: necesita CREATEROLE, o que un superusuario los cree antes.', current_user;
    END IF;
END
$$;

DO $$
BEGIN
    IF NOT EXISTS (SELECT 1 FROM pg_roles WHERE rolname = 'atipicos_consulta') THEN
        CREATE ROLE atipicos_consulta NOLOGIN;
    END IF;
    IF NOT EXISTS (SELECT 1 FROM pg_roles WHERE rolname = 'atipicos_puesto') THEN
        CREATE ROLE atipicos_puesto NOLOGIN IN ROLE atipicos_consulta;
    END IF;
    IF NOT EXISTS (SELECT 1 FROM pg_roles WHERE rolname = 'atipicos_suplencia') THEN
        CREATE ROLE atipicos_suplencia NOLOGIN IN ROLE atipicos_puesto;
    END IF;
    IF NOT EXISTS (SELECT 1 FROM pg_roles WHERE rolname = 'atipicos_historial') THEN
        CREATE ROLE atipicos_historial NOLOGIN IN ROLE atipicos_consulta;
    END IF;
END
$$;

-- Who only looks: listar, mostrar, imprimir, verificar.
GRANT USAGE ON SCHEMA orvalin, dbo TO atipicos_consulta;
GRANT SELECT ON ALL TABLES IN SCHEMA orvalin, dbo TO atipicos_consulta;

-- Who records charges, as the user that his login is; a member of atipicos_suplencia as any user, with --usuario. Entries
-- are added, never changed: that is done in the accounting product.
GRANT INSERT, UPDATE, DELETE ON orvalin.Proveedores_Cargos_Atipicos, orvalin.Proveedores_Cargos_Atipicos_Lineas
    TO atipicos_puesto;
REVOKE UPDATE ON orvalin.Contador_Proveedores_Cargos_Atipicos, dbo.Contador_Asientos FROM atipicos_puesto;
GRANT INSERT, UPDATE (Numero) ON orvalin.Contador_Proveedores_Cargos_Atipicos, dbo.Contador_Asientos
    TO atipicos_puesto; -- and only forward: a trigger sees to that
GRANT INSERT ON orvalin.Importaciones, dbo.Asientos, dbo.Apuntes, dbo.Registro_Impuestos, dbo.Previsiones,
    dbo.Regularizaciones, dbo.Asientos_Incompletos TO atipicos_puesto;

-- Who reads what has been done to charges, by whom and from where: the database writes it by itself, and nobody else.
REVOKE ALL ON orvalin.Historial, orvalin.Historial_Anulaciones FROM atipicos_consulta, atipicos_puesto;
GRANT SELECT ON orvalin.Historial, orvalin.Historial_Anulaciones TO atipicos_historial;

-- Which commits were done is written and read through functions that have the rights of the owner.
REVOKE ALL ON orvalin.Confirmaciones FROM atipicos_consulta, atipicos_puesto;

COMMIT;

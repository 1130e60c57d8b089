-- Spreads the tables over the nodes of a PostgreSQL server that has Citus: catalogues are on every node, what is recorded
-- on the node of its company. Run by `crear` and `actualizar`, in their transaction; what is spread already stays as
-- it is. Foreign keys go before, because a table that is spread may only name one that is, and come back after. The
-- triggers of the trail, of rights and of counters go for good: Citus knows none on tables that are spread, so that
-- `historial` keeps what was written until then. Not tried on a Citus yet.
DO '
DECLARE
    catalogos CONSTANT text[] := ARRAY[''orvalin.esquema'', ''orvalin.empresas'', ''orvalin.parametros'',
        ''orvalin.tipos_impuesto'', ''orvalin.sgd_usuarios'', ''orvalin.accesos'', ''orvalin.almacenes'',
        ''orvalin.proveedores'', ''orvalin.articulos'', ''dbo.esquema'', ''dbo.empresas'', ''dbo.parametros'',
        ''dbo.ejercicios'', ''dbo.cuentas'', ''dbo.tipos_impuesto'', ''dbo.tipos_doc'', ''dbo.formas_pago''];
    repartidas CONSTANT text[] := ARRAY[''orvalin.proveedores_cargos_atipicos'',
        ''orvalin.proveedores_cargos_atipicos_lineas'', ''orvalin.contador_proveedores_cargos_atipicos'',
        ''orvalin.importaciones'', ''dbo.asientos'', ''dbo.apuntes'', ''dbo.contador_asientos'',
        ''dbo.registro_impuestos'', ''dbo.previsiones'', ''dbo.regularizaciones'', ''dbo.asientos_incompletos''];
    nombres CONSTANT text := current_setting(''search_path'');
    pendientes regclass[];
    quita text[];
    pon text[];
    una text;
BEGIN
    SELECT array_agg(t::regclass) INTO pendientes FROM unnest(catalogos || repartidas) t
        WHERE NOT EXISTS (SELECT 1 FROM pg_dist_partition d WHERE d.logicalrelid = t::regclass);
    IF pendientes IS NULL THEN
        RETURN;
    END IF;
    PERFORM set_config(''search_path'', ''pg_catalog'', true); -- so that every table is told with its schema
    PERFORM set_config(''citus.multi_shard_modify_mode'', ''sequential'', true);
    SELECT array_agg(format(''DROP TRIGGER %I ON %s'', tgname, tgrelid::regclass) ORDER BY tgname) INTO quita
        FROM pg_trigger WHERE tgrelid = ANY (pendientes) AND NOT tgisinternal;
    FOREACH una IN ARRAY COALESCE(quita, ''{}'') LOOP
        EXECUTE una;
    END LOOP;
    SELECT array_agg(format(''ALTER TABLE %s DROP CONSTRAINT %I'', conrelid::regclass, conname) ORDER BY conname),
           array_agg(format(''ALTER TABLE %s ADD CONSTRAINT %I %s'', conrelid::regclass, conname,
                            pg_get_constraintdef(oid)) ORDER BY conname)
        INTO quita, pon
        FROM pg_constraint
        WHERE contype = ''f'' AND (conrelid = ANY (pendientes) OR confrelid = ANY (pendientes));
    FOREACH una IN ARRAY COALESCE(quita, ''{}'') LOOP
        EXECUTE una;
    END LOOP;
    FOREACH una IN ARRAY catalogos LOOP
        IF una::regclass = ANY (pendientes) THEN
            PERFORM create_reference_table(una::regclass);
        END IF;
    END LOOP;
    FOREACH una IN ARRAY repartidas LOOP
        IF una::regclass = ANY (pendientes) THEN
            PERFORM create_distributed_table(una::regclass, ''cod_empresa'',
                colocate_with => CASE WHEN una = repartidas[1] THEN ''default'' ELSE repartidas[1] END);
        END IF;
    END LOOP;
    FOREACH una IN ARRAY COALESCE(pon, ''{}'') LOOP
        EXECUTE una;
    END LOOP;
    PERFORM set_config(''search_path'', nombres, true);
END';

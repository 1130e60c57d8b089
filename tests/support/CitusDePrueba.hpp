#pragma once

namespace atipicos::pruebas {

/// A test double of Citus, for psql: an extension of that name with the functions and the catalogue of its
/// that the program calls, which spread nothing. They refuse what it refuses (triggers, foreign keys to
/// tables that are not spread, a primary key without the column, a parallel transaction) and keep what they
/// were asked for, in order, in `pg_catalog.llamadas_de_prueba`.
inline constexpr auto citus_de_prueba = R"(
SET allow_system_table_mods TO on;
INSERT INTO pg_extension (oid, extname, extowner, extnamespace, extrelocatable, extversion)
VALUES (98765, 'citus', 10, 'pg_catalog'::regnamespace, false, '12.1-1');
CREATE TABLE pg_catalog.pg_dist_partition (logicalrelid regclass PRIMARY KEY, partmethod "char", partkey text);
CREATE TABLE pg_catalog.llamadas_de_prueba (orden serial, que text);
CREATE FUNCTION pg_catalog.admite_de_prueba(tabla regclass) RETURNS void LANGUAGE plpgsql AS $$
BEGIN
    IF current_setting('citus.multi_shard_modify_mode', true) IS DISTINCT FROM 'sequential' THEN
        RAISE EXCEPTION 'cannot distribute relation in a parallel transaction';
    END IF;
    IF EXISTS (SELECT 1 FROM pg_dist_partition WHERE logicalrelid = tabla) THEN
        RAISE EXCEPTION 'table % is already distributed', tabla;
    END IF;
    IF EXISTS (SELECT 1 FROM pg_trigger WHERE tgrelid = tabla AND NOT tgisinternal) THEN
        RAISE EXCEPTION 'triggers are not supported on distributed tables: %', tabla;
    END IF;
    IF EXISTS (SELECT 1 FROM pg_constraint WHERE contype = 'f' AND tabla IN (conrelid, confrelid)) THEN
        RAISE EXCEPTION 'cannot distribute % with foreign keys to local tables', tabla;
    END IF;
END $$;
CREATE FUNCTION pg_catalog.create_reference_table(table_name regclass) RETURNS void LANGUAGE plpgsql AS $$
BEGIN
    PERFORM admite_de_prueba(table_name);
    INSERT INTO pg_dist_partition VALUES (table_name, 'n', NULL);
    INSERT INTO llamadas_de_prueba (que) VALUES ('catálogo ' || table_name);
END $$;
CREATE FUNCTION pg_catalog.create_distributed_table(table_name regclass, distribution_column text,
    distribution_type text DEFAULT 'hash', colocate_with text DEFAULT 'default', shard_count int DEFAULT NULL)
    RETURNS void LANGUAGE plpgsql AS $$
BEGIN
    PERFORM admite_de_prueba(table_name);
    IF NOT EXISTS (SELECT 1 FROM pg_index i JOIN pg_attribute a ON a.attrelid = i.indrelid AND a.attnum = ANY (i.indkey)
                   WHERE i.indrelid = table_name AND i.indisprimary AND a.attname = distribution_column) THEN
        RAISE EXCEPTION 'cannot create constraint on %: it must include the column', table_name;
    END IF;
    INSERT INTO pg_dist_partition VALUES (table_name, 'h', distribution_column);
    INSERT INTO llamadas_de_prueba (que)
    VALUES ('por ' || distribution_column || ' ' || table_name || ' con ' || colocate_with);
END $$;
)";

} // namespace atipicos::pruebas

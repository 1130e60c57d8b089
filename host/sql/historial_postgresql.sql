-- What has been done to charges, by whom and from where: written by the database itself in the transaction that does
-- it, so that no program can leave it out. Of a row that is changed or deleted it keeps what it was; what it became is
-- the row that is there, or what the next change says that it was. The functions run with the rights of the owner of
-- the tables: who works with charges needs none on these.

CREATE TABLE orvalin.Historial (
    Numero        BIGSERIAL PRIMARY KEY,
    Momento       TIMESTAMP(3) NOT NULL,
    Accion        NVARCHAR(10) NOT NULL,   -- alta, cambio or baja
    Cod_Empresa   SMALLINT NOT NULL,
    Cod_Ejercicio SMALLINT NOT NULL,
    Cod_Almacen   SMALLINT NOT NULL,
    Codigo        NVARCHAR(20) NOT NULL,
    Num_Linea     INT NOT NULL,            -- 0: the header
    Usuario       NVARCHAR(20) NOT NULL,   -- whom the header names; empty: a line
    Login         NVARCHAR(128) NOT NULL,  -- who did it, as the server knows him
    Puesto        NVARCHAR(200) NOT NULL,  -- from which address, with which program
    Antes         TEXT                     -- JSON: the row as it was
);
CREATE INDEX Historial_Cargo ON orvalin.Historial (Cod_Empresa, Cod_Ejercicio, Cod_Almacen, Codigo);

-- Which entries have been reversed.
CREATE TABLE orvalin.Historial_Anulaciones (
    Cod_Empresa   SMALLINT NOT NULL,       -- accounting company, year and number
    Cod_Ejercicio SMALLINT NOT NULL,
    Asiento       INT NOT NULL,
    Por_Ejercicio SMALLINT NOT NULL,       -- of the entry that reverses it; number 0: by hand
    Por_Asiento   INT NOT NULL,
    Momento       TIMESTAMP(3) NOT NULL,
    Usuario       NVARCHAR(20) NOT NULL,
    Login         NVARCHAR(128) NOT NULL,
    Puesto        NVARCHAR(200) NOT NULL,
    PRIMARY KEY (Cod_Empresa, Cod_Ejercicio, Asiento)
);

CREATE FUNCTION orvalin.historial_puesto() RETURNS text LANGUAGE sql STABLE SET search_path = pg_catalog AS '
    SELECT left(COALESCE(host(inet_client_addr()), ''local'') || COALESCE('' '' || current_setting(''application_name''), ''''), 200)';

-- TG_ARGV[0]: the column with the number of the line; none for the header.
CREATE FUNCTION orvalin.historial_anota() RETURNS trigger LANGUAGE plpgsql SECURITY DEFINER SET search_path = pg_catalog AS '
DECLARE
    de_linea CONSTANT boolean := TG_NARGS > 0;
    otra_clave boolean := false;
    linea int := 0;
    usuario text := '''';
BEGIN
    IF TG_OP = ''UPDATE'' THEN -- another code is another charge, or line
        otra_clave := (OLD.Cod_Empresa, OLD.Cod_Ejercicio, OLD.Cod_Almacen, OLD.Codigo)
            <> (NEW.Cod_Empresa, NEW.Cod_Ejercicio, NEW.Cod_Almacen, NEW.Codigo);
        IF de_linea THEN otra_clave := otra_clave OR OLD.Num_Linea <> NEW.Num_Linea;
        ELSE usuario := NEW.Usuario;
        END IF;
    END IF;
    IF TG_OP <> ''INSERT'' THEN
        IF de_linea THEN linea := OLD.Num_Linea; END IF;
        INSERT INTO orvalin.Historial (Momento, Accion, Cod_Empresa, Cod_Ejercicio, Cod_Almacen, Codigo, Num_Linea,
                                       Usuario, Login, Puesto, Antes)
        VALUES (localtimestamp, CASE WHEN TG_OP = ''DELETE'' OR otra_clave THEN ''baja'' ELSE ''cambio'' END,
                OLD.Cod_Empresa, OLD.Cod_Ejercicio, OLD.Cod_Almacen, OLD.Codigo, linea, usuario, session_user,
                orvalin.historial_puesto(), to_json(OLD)::text);
    END IF;
    IF TG_OP = ''INSERT'' OR otra_clave THEN
        IF de_linea THEN linea := NEW.Num_Linea;
        ELSE usuario := NEW.Usuario;
        END IF;
        INSERT INTO orvalin.Historial (Momento, Accion, Cod_Empresa, Cod_Ejercicio, Cod_Almacen, Codigo, Num_Linea,
                                       Usuario, Login, Puesto)
        VALUES (localtimestamp, ''alta'', NEW.Cod_Empresa, NEW.Cod_Ejercicio, NEW.Cod_Almacen, NEW.Codigo, linea,
                usuario, session_user, orvalin.historial_puesto());
    END IF;
    RETURN NULL;
END';

CREATE TRIGGER Cargo_Alta AFTER INSERT OR DELETE ON orvalin.Proveedores_Cargos_Atipicos
    FOR EACH ROW EXECUTE FUNCTION orvalin.historial_anota();
CREATE TRIGGER Cargo_Cambio AFTER UPDATE ON orvalin.Proveedores_Cargos_Atipicos
    FOR EACH ROW EXECUTE FUNCTION orvalin.historial_anota();
CREATE TRIGGER Linea_Alta AFTER INSERT OR DELETE ON orvalin.Proveedores_Cargos_Atipicos_Lineas
    FOR EACH ROW EXECUTE FUNCTION orvalin.historial_anota('linea');
-- A save writes all lines again: those that stay as they are have not been changed.
CREATE TRIGGER Linea_Cambio AFTER UPDATE ON orvalin.Proveedores_Cargos_Atipicos_Lineas
    FOR EACH ROW WHEN (OLD.* IS DISTINCT FROM NEW.*) EXECUTE FUNCTION orvalin.historial_anota('linea');

CREATE FUNCTION orvalin.historial_anula() RETURNS trigger LANGUAGE plpgsql SECURITY DEFINER SET search_path = pg_catalog AS '
BEGIN
    INSERT INTO orvalin.Historial_Anulaciones (Cod_Empresa, Cod_Ejercicio, Asiento, Por_Ejercicio, Por_Asiento,
                                               Momento, Usuario, Login, Puesto)
    VALUES (NEW.Cod_Empresa, NEW.Cod_Ejercicio, NEW.Asiento, NEW.Por_Ejercicio, NEW.Por_Asiento, localtimestamp,
            NEW.Usuario, session_user, orvalin.historial_puesto());
    RETURN NULL;
END';
CREATE TRIGGER Asiento_Anulado AFTER INSERT ON dbo.Regularizaciones
    FOR EACH ROW EXECUTE FUNCTION orvalin.historial_anula();

-- Nobody changes it, whatever rights he has.
CREATE FUNCTION orvalin.historial_firme() RETURNS trigger LANGUAGE plpgsql SET search_path = pg_catalog AS '
BEGIN
    RAISE EXCEPTION ''El historial no se cambia ni se borra.'' USING ERRCODE = ''insufficient_privilege'';
END';
CREATE TRIGGER Historial_Firme BEFORE UPDATE OR DELETE OR TRUNCATE ON orvalin.Historial
    FOR EACH STATEMENT EXECUTE FUNCTION orvalin.historial_firme();
CREATE TRIGGER Anulaciones_Firmes BEFORE UPDATE OR DELETE OR TRUNCATE ON orvalin.Historial_Anulaciones
    FOR EACH STATEMENT EXECUTE FUNCTION orvalin.historial_firme();

-- A function is anybody's unless it is said otherwise; these are run by the triggers alone.
REVOKE ALL ON FUNCTION orvalin.historial_puesto() FROM PUBLIC;

-- A number that has been given out is not given again: only the owner of a counter can set it back.
CREATE FUNCTION orvalin.contador_no_vuelve() RETURNS trigger LANGUAGE plpgsql SET search_path = pg_catalog AS '
BEGIN
    IF NOT pg_has_role(session_user, (SELECT relowner FROM pg_class WHERE oid = TG_RELID), ''USAGE'') THEN
        RAISE EXCEPTION ''Un contador no vuelve atrás: % es menor que %.'', NEW.Numero, OLD.Numero
            USING ERRCODE = ''insufficient_privilege'';
    END IF;
    RETURN NEW;
END';
CREATE TRIGGER Contador_Firme BEFORE UPDATE ON orvalin.Contador_Proveedores_Cargos_Atipicos
    FOR EACH ROW WHEN (NEW.Numero < OLD.Numero) EXECUTE FUNCTION orvalin.contador_no_vuelve();
CREATE TRIGGER Contador_Firme BEFORE UPDATE ON dbo.Contador_Asientos
    FOR EACH ROW WHEN (NEW.Numero < OLD.Numero) EXECUTE FUNCTION orvalin.contador_no_vuelve();

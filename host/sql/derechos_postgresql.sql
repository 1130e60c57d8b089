-- What holds for whoever works with the tables, whatever his program says: he is the user that his login is, entries
-- balance, and have no lines added once they are posted. The functions run with the rights of the owner of the
-- tables, and look at who has logged in, not at whom he has made himself since.

-- Whether who has logged in may act as any user: the owner of the tables, a superuser, and a role for those who do.
CREATE FUNCTION orvalin.actua_por_otros() RETURNS boolean LANGUAGE sql STABLE SET search_path = pg_catalog AS '
    SELECT pg_has_role(session_user, (SELECT relowner FROM pg_class WHERE oid = ''orvalin.accesos''::regclass), ''USAGE'')
        OR COALESCE((SELECT pg_has_role(session_user, oid, ''USAGE'') FROM pg_roles
                     WHERE rolname = ''atipicos_suplencia''), false)';

CREATE FUNCTION orvalin.es_su_usuario() RETURNS trigger LANGUAGE plpgsql SECURITY DEFINER SET search_path = pg_catalog AS '
DECLARE
    suyo text;
BEGIN
    SELECT a.Usuario::text INTO suyo FROM orvalin.Accesos a WHERE a.Login = session_user;
    IF suyo IS DISTINCT FROM NEW.Usuario::text AND NOT orvalin.actua_por_otros() THEN
        RAISE EXCEPTION ''«%» no puede actuar como el usuario %.'', session_user, NEW.Usuario
            USING ERRCODE = ''insufficient_privilege'';
    END IF;
    RETURN NEW;
END';
CREATE TRIGGER Usuario_Suyo BEFORE INSERT OR UPDATE OF Usuario ON orvalin.Proveedores_Cargos_Atipicos
    FOR EACH ROW EXECUTE FUNCTION orvalin.es_su_usuario();
CREATE TRIGGER Usuario_Suyo BEFORE INSERT ON dbo.Asientos
    FOR EACH ROW EXECUTE FUNCTION orvalin.es_su_usuario();
CREATE TRIGGER Usuario_Suyo BEFORE INSERT ON dbo.Regularizaciones
    FOR EACH ROW EXECUTE FUNCTION orvalin.es_su_usuario();

-- An entry balances when it is committed, or says that it is incomplete; and lines are added to none that was committed
-- before, but by the owner of the tables. Asked for each line: one that asked for the entry alone could be had out of
-- the way before the last line. One question does for both, because every save pays for it: the header that can be
-- seen is of this transaction when the number that wrote it, a savepoint's perhaps, is not before that of the
-- transaction and still in progress. Numbers of 32 bits turn over; their distance to this one does not.
CREATE FUNCTION dbo.asiento_cuadra() RETURNS trigger LANGUAGE plpgsql SECURITY DEFINER SET search_path = pg_catalog AS '
DECLARE
    diferencia numeric;
    de_ahora boolean;
BEGIN
    SELECT (SELECT SUM(u.Debe - u.Haber) FROM dbo.Apuntes u
            WHERE u.Cod_Empresa = NEW.Cod_Empresa AND u.Cod_Ejercicio = NEW.Cod_Ejercicio AND u.Asiento = NEW.Asiento),
           CASE WHEN age(a.xmin) > age(pg_current_xact_id()::xid) THEN false
               ELSE pg_xact_status((pg_current_xact_id()::text::bigint + age(pg_current_xact_id()::xid)
                                    - age(a.xmin))::text::xid8) = ''in progress'' END
        INTO diferencia, de_ahora
        FROM dbo.Asientos a
        WHERE a.Cod_Empresa = NEW.Cod_Empresa AND a.Cod_Ejercicio = NEW.Cod_Ejercicio AND a.Numero = NEW.Asiento;
    IF NOT de_ahora AND NOT pg_has_role(session_user, (SELECT relowner FROM pg_class WHERE oid = TG_RELID), ''USAGE'') THEN
        RAISE EXCEPTION ''El asiento %/%/% ya está contabilizado y no se le añade nada.'', NEW.Cod_Empresa,
            NEW.Cod_Ejercicio, NEW.Asiento USING ERRCODE = ''insufficient_privilege'';
    END IF;
    IF diferencia <> 0 AND NOT EXISTS (SELECT 1 FROM dbo.Asientos_Incompletos i WHERE i.Cod_Empresa = NEW.Cod_Empresa
        AND i.Cod_Ejercicio = NEW.Cod_Ejercicio AND i.Numero = NEW.Asiento) THEN
        RAISE EXCEPTION ''El asiento %/%/% no cuadra: el debe menos el haber es %.'', NEW.Cod_Empresa,
            NEW.Cod_Ejercicio, NEW.Asiento, diferencia USING ERRCODE = ''check_violation'';
    END IF;
    RETURN NULL;
END';
CREATE CONSTRAINT TRIGGER Asiento_Cuadra AFTER INSERT ON dbo.Apuntes DEFERRABLE INITIALLY DEFERRED
    FOR EACH ROW EXECUTE FUNCTION dbo.asiento_cuadra();

-- What has been done to charges, by whom and from where: written by the database itself in the transaction that does
-- it, so that no program can leave it out. Of a row that is changed or deleted it keeps what it was; what it became is
-- the row that is there, or what the next change says that it was.

CREATE TABLE Historial (
    Numero        INTEGER PRIMARY KEY,
    Momento       DATETIME NOT NULL,
    Accion        NVARCHAR(10) NOT NULL,            -- alta, cambio or baja
    Cod_Empresa   SMALLINT NOT NULL,
    Cod_Ejercicio SMALLINT NOT NULL,
    Cod_Almacen   SMALLINT NOT NULL,
    Codigo        NVARCHAR(20) NOT NULL,
    Num_Linea     INT NOT NULL,                     -- 0: the header
    Usuario       NVARCHAR(20) NOT NULL,            -- whom the header names; empty: a line
    Login         NVARCHAR(128) NOT NULL DEFAULT '', -- who did it, as this machine knows him; empty: another program
    Puesto        NVARCHAR(200) NOT NULL DEFAULT '', -- the machine, and the program
    Antes         NVARCHAR(4000)                    -- JSON: the row as it was
);
CREATE INDEX Historial_Cargo ON Historial (Cod_Empresa, Cod_Ejercicio, Cod_Almacen, Codigo);

-- Which entries have been reversed.
CREATE TABLE Historial_Anulaciones (
    Cod_Empresa   SMALLINT NOT NULL,                -- accounting company, year and number
    Cod_Ejercicio SMALLINT NOT NULL,
    Asiento       INT NOT NULL,
    Por_Ejercicio SMALLINT NOT NULL,                -- of the entry that reverses it; number 0: by hand
    Por_Asiento   INT NOT NULL,
    Momento       DATETIME NOT NULL,
    Usuario       NVARCHAR(20) NOT NULL,
    Login         NVARCHAR(128) NOT NULL DEFAULT '',
    Puesto        NVARCHAR(200) NOT NULL DEFAULT '',
    PRIMARY KEY (Cod_Empresa, Cod_Ejercicio, Asiento)
);

CREATE TRIGGER Cargo_Alta AFTER INSERT ON Proveedores_Cargos_Atipicos
BEGIN
    INSERT INTO Historial (Momento, Accion, Cod_Empresa, Cod_Ejercicio, Cod_Almacen, Codigo, Num_Linea, Usuario)
    VALUES (strftime('%Y-%m-%d %H:%M:%S', 'now', 'localtime'), 'alta',
            NEW.Cod_Empresa, NEW.Cod_Ejercicio, NEW.Cod_Almacen, NEW.Codigo, 0, NEW.Usuario);
END;

-- Another code is another charge.
CREATE TRIGGER Cargo_Cambio AFTER UPDATE ON Proveedores_Cargos_Atipicos
BEGIN
    INSERT INTO Historial
        (Momento, Accion, Cod_Empresa, Cod_Ejercicio, Cod_Almacen, Codigo, Num_Linea, Usuario, Antes)
    VALUES (strftime('%Y-%m-%d %H:%M:%S', 'now', 'localtime'),
            CASE WHEN (NEW.Cod_Empresa, NEW.Cod_Ejercicio, NEW.Cod_Almacen, NEW.Codigo)
                IS (OLD.Cod_Empresa, OLD.Cod_Ejercicio, OLD.Cod_Almacen, OLD.Codigo) THEN 'cambio' ELSE 'baja' END,
            OLD.Cod_Empresa, OLD.Cod_Ejercicio, OLD.Cod_Almacen, OLD.Codigo, 0, NEW.Usuario,
            json_object('Proveedor', OLD.Proveedor, 'Fecha', OLD.Fecha, 'Importe', OLD.Importe, 'Asiento', OLD.Asiento,
                'EmpContable', OLD.EmpContable, 'EjContable', OLD.EjContable, 'Usuario', OLD.Usuario, 'Hora', OLD.Hora,
                'Observ', OLD.Observ, 'Cod_Compra', OLD.Cod_Compra, 'Documento', OLD.Documento,
                'Impuesto', OLD.Impuesto, 'Impuesto_Importe', OLD.Impuesto_Importe, 'Tipo', OLD.Tipo));
    INSERT INTO Historial (Momento, Accion, Cod_Empresa, Cod_Ejercicio, Cod_Almacen, Codigo, Num_Linea, Usuario)
    SELECT strftime('%Y-%m-%d %H:%M:%S', 'now', 'localtime'), 'alta',
           NEW.Cod_Empresa, NEW.Cod_Ejercicio, NEW.Cod_Almacen, NEW.Codigo, 0, NEW.Usuario
    WHERE (NEW.Cod_Empresa, NEW.Cod_Ejercicio, NEW.Cod_Almacen, NEW.Codigo)
        IS NOT (OLD.Cod_Empresa, OLD.Cod_Ejercicio, OLD.Cod_Almacen, OLD.Codigo);
END;

CREATE TRIGGER Cargo_Baja AFTER DELETE ON Proveedores_Cargos_Atipicos
BEGIN
    INSERT INTO Historial
        (Momento, Accion, Cod_Empresa, Cod_Ejercicio, Cod_Almacen, Codigo, Num_Linea, Usuario, Antes)
    VALUES (strftime('%Y-%m-%d %H:%M:%S', 'now', 'localtime'), 'baja',
            OLD.Cod_Empresa, OLD.Cod_Ejercicio, OLD.Cod_Almacen, OLD.Codigo, 0, '',
            json_object('Proveedor', OLD.Proveedor, 'Fecha', OLD.Fecha, 'Importe', OLD.Importe, 'Asiento', OLD.Asiento,
                'EmpContable', OLD.EmpContable, 'EjContable', OLD.EjContable, 'Usuario', OLD.Usuario, 'Hora', OLD.Hora,
                'Observ', OLD.Observ, 'Cod_Compra', OLD.Cod_Compra, 'Documento', OLD.Documento,
                'Impuesto', OLD.Impuesto, 'Impuesto_Importe', OLD.Impuesto_Importe, 'Tipo', OLD.Tipo));
END;

CREATE TRIGGER Linea_Alta AFTER INSERT ON Proveedores_Cargos_Atipicos_Lineas
BEGIN
    INSERT INTO Historial (Momento, Accion, Cod_Empresa, Cod_Ejercicio, Cod_Almacen, Codigo, Num_Linea, Usuario)
    VALUES (strftime('%Y-%m-%d %H:%M:%S', 'now', 'localtime'), 'alta',
            NEW.Cod_Empresa, NEW.Cod_Ejercicio, NEW.Cod_Almacen, NEW.Codigo, NEW.Num_Linea, '');
END;

-- A save writes all lines again: those that stay as they are have not been changed.
CREATE TRIGGER Linea_Cambio AFTER UPDATE ON Proveedores_Cargos_Atipicos_Lineas
    WHEN (NEW.Cod_Empresa, NEW.Cod_Ejercicio, NEW.Cod_Almacen, NEW.Codigo, NEW.Num_Linea,
          NEW.Cod_Articulo, NEW.Descripcion, NEW.Unidades, NEW.Precio, NEW.Observ)
        IS NOT (OLD.Cod_Empresa, OLD.Cod_Ejercicio, OLD.Cod_Almacen, OLD.Codigo, OLD.Num_Linea,
                OLD.Cod_Articulo, OLD.Descripcion, OLD.Unidades, OLD.Precio, OLD.Observ)
BEGIN
    INSERT INTO Historial
        (Momento, Accion, Cod_Empresa, Cod_Ejercicio, Cod_Almacen, Codigo, Num_Linea, Usuario, Antes)
    VALUES (strftime('%Y-%m-%d %H:%M:%S', 'now', 'localtime'),
            CASE WHEN (NEW.Cod_Empresa, NEW.Cod_Ejercicio, NEW.Cod_Almacen, NEW.Codigo, NEW.Num_Linea)
                IS (OLD.Cod_Empresa, OLD.Cod_Ejercicio, OLD.Cod_Almacen, OLD.Codigo, OLD.Num_Linea) THEN 'cambio' ELSE 'baja' END,
            OLD.Cod_Empresa, OLD.Cod_Ejercicio, OLD.Cod_Almacen, OLD.Codigo, OLD.Num_Linea, '',
            json_object('Cod_Articulo', OLD.Cod_Articulo, 'Descripcion', OLD.Descripcion, 'Unidades', OLD.Unidades,
                'Precio', OLD.Precio, 'Observ', OLD.Observ));
    INSERT INTO Historial (Momento, Accion, Cod_Empresa, Cod_Ejercicio, Cod_Almacen, Codigo, Num_Linea, Usuario)
    SELECT strftime('%Y-%m-%d %H:%M:%S', 'now', 'localtime'), 'alta',
           NEW.Cod_Empresa, NEW.Cod_Ejercicio, NEW.Cod_Almacen, NEW.Codigo, NEW.Num_Linea, ''
    WHERE (NEW.Cod_Empresa, NEW.Cod_Ejercicio, NEW.Cod_Almacen, NEW.Codigo, NEW.Num_Linea)
        IS NOT (OLD.Cod_Empresa, OLD.Cod_Ejercicio, OLD.Cod_Almacen, OLD.Codigo, OLD.Num_Linea);
END;

CREATE TRIGGER Linea_Baja AFTER DELETE ON Proveedores_Cargos_Atipicos_Lineas
BEGIN
    INSERT INTO Historial
        (Momento, Accion, Cod_Empresa, Cod_Ejercicio, Cod_Almacen, Codigo, Num_Linea, Usuario, Antes)
    VALUES (strftime('%Y-%m-%d %H:%M:%S', 'now', 'localtime'), 'baja',
            OLD.Cod_Empresa, OLD.Cod_Ejercicio, OLD.Cod_Almacen, OLD.Codigo, OLD.Num_Linea, '',
            json_object('Cod_Articulo', OLD.Cod_Articulo, 'Descripcion', OLD.Descripcion, 'Unidades', OLD.Unidades,
                'Precio', OLD.Precio, 'Observ', OLD.Observ));
END;

CREATE TRIGGER Asiento_Anulado AFTER INSERT ON Bexmor_Regularizaciones
BEGIN
    INSERT INTO Historial_Anulaciones
        (Cod_Empresa, Cod_Ejercicio, Asiento, Por_Ejercicio, Por_Asiento, Momento, Usuario)
    VALUES (NEW.Cod_Empresa, NEW.Cod_Ejercicio, NEW.Asiento, NEW.Por_Ejercicio, NEW.Por_Asiento,
            strftime('%Y-%m-%d %H:%M:%S', 'now', 'localtime'), NEW.Usuario);
END;

-- Nobody changes it: a file knows no users, so that who did something is added once by the session that did it.
CREATE TRIGGER Historial_Firme BEFORE UPDATE OF Numero, Momento, Accion, Cod_Empresa, Cod_Ejercicio, Cod_Almacen,
    Codigo, Num_Linea, Usuario, Antes ON Historial
BEGIN
    SELECT RAISE(ABORT, 'El historial no se cambia.');
END;
CREATE TRIGGER Historial_Firmado BEFORE UPDATE OF Login, Puesto ON Historial WHEN OLD.Login <> ''
BEGIN
    SELECT RAISE(ABORT, 'El historial no se cambia.');
END;
CREATE TRIGGER Historial_Entero BEFORE DELETE ON Historial
BEGIN
    SELECT RAISE(ABORT, 'El historial no se borra.');
END;
CREATE TRIGGER Anulaciones_Firmes BEFORE UPDATE OF Cod_Empresa, Cod_Ejercicio, Asiento, Por_Ejercicio, Por_Asiento,
    Momento, Usuario ON Historial_Anulaciones
BEGIN
    SELECT RAISE(ABORT, 'El historial no se cambia.');
END;
CREATE TRIGGER Anulaciones_Firmadas BEFORE UPDATE OF Login, Puesto ON Historial_Anulaciones WHEN OLD.Login <> ''
BEGIN
    SELECT RAISE(ABORT, 'El historial no se cambia.');
END;
CREATE TRIGGER Anulaciones_Enteras BEFORE DELETE ON Historial_Anulaciones
BEGIN
    SELECT RAISE(ABORT, 'El historial no se borra.');
END;

-- What has been done to charges, by whom and from where: written by the database itself in the transaction that does
-- it, so that no program can leave it out. Of a row that is changed or deleted it keeps what it was; what it became is
-- the row that is there, or what the next change says that it was. In Orvalin. Not tried on a server yet.

CREATE TABLE Historial (
    Numero        BIGINT IDENTITY PRIMARY KEY,
    Momento       DATETIME NOT NULL,
    Accion        NVARCHAR(10) NOT NULL,   -- alta, cambio or baja
    Cod_Empresa   SMALLINT NOT NULL,
    Cod_Ejercicio SMALLINT NOT NULL,
    Cod_Almacen   SMALLINT NOT NULL,
    Codigo        NVARCHAR(20) NOT NULL,
    Num_Linea     INT NOT NULL,            -- 0: the header
    Usuario       NVARCHAR(20) NOT NULL,   -- whom the header names; empty: a line
    Login         NVARCHAR(128) NOT NULL,  -- who did it, as the server knows him
    Puesto        NVARCHAR(200) NOT NULL,  -- the machine, with which program
    Antes         NVARCHAR(MAX)            -- JSON: the row as it was
);
CREATE INDEX Historial_Cargo ON Historial (Cod_Empresa, Cod_Ejercicio, Cod_Almacen, Codigo);

-- Which entries have been reversed.
CREATE TABLE Historial_Anulaciones (
    Cod_Empresa   SMALLINT NOT NULL,       -- accounting company, year and number
    Cod_Ejercicio SMALLINT NOT NULL,
    Asiento       INT NOT NULL,
    Por_Ejercicio SMALLINT NOT NULL,       -- of the entry that reverses it; number 0: by hand
    Por_Asiento   INT NOT NULL,
    Momento       DATETIME NOT NULL,
    Usuario       NVARCHAR(20) NOT NULL,
    Login         NVARCHAR(128) NOT NULL,
    Puesto        NVARCHAR(200) NOT NULL,
    PRIMARY KEY (Cod_Empresa, Cod_Ejercicio, Asiento)
);

-- Those who are let read the other tables are not let read these: that is for a role of its own.
CREATE TRIGGER Cargo_Historial ON Proveedores_Cargos_Atipicos AFTER INSERT, UPDATE, DELETE AS
BEGIN
    SET NOCOUNT ON;
    INSERT INTO Historial (Momento, Accion, Cod_Empresa, Cod_Ejercicio, Cod_Almacen, Codigo, Num_Linea, Usuario, Login,
                           Puesto, Antes)
    SELECT GETDATE(), CASE WHEN n.Codigo IS NULL THEN 'baja' ELSE 'cambio' END, o.Cod_Empresa, o.Cod_Ejercicio,
           o.Cod_Almacen, o.Codigo, 0, ISNULL(CAST(n.Usuario AS NVARCHAR(20)), ''), ORIGINAL_LOGIN(),
           LEFT(ISNULL(HOST_NAME(), '') + ' ' + ISNULL(APP_NAME(), ''), 200),
           (SELECT o.Proveedor, o.Fecha, o.Importe, o.Asiento, o.EmpContable, o.EjContable, o.Usuario, o.Hora, o.Observ,
                   o.Cod_Compra, o.Documento, o.Impuesto, o.Impuesto_Importe, o.Tipo
            FOR JSON PATH, WITHOUT_ARRAY_WRAPPER, INCLUDE_NULL_VALUES)
    FROM deleted o
        LEFT JOIN inserted n ON n.Cod_Empresa = o.Cod_Empresa AND n.Cod_Ejercicio = o.Cod_Ejercicio
            AND n.Cod_Almacen = o.Cod_Almacen AND n.Codigo = o.Codigo;
    INSERT INTO Historial (Momento, Accion, Cod_Empresa, Cod_Ejercicio, Cod_Almacen, Codigo, Num_Linea, Usuario, Login,
                           Puesto)
    SELECT GETDATE(), 'alta', n.Cod_Empresa, n.Cod_Ejercicio, n.Cod_Almacen, n.Codigo, 0,
           CAST(n.Usuario AS NVARCHAR(20)), ORIGINAL_LOGIN(),
           LEFT(ISNULL(HOST_NAME(), '') + ' ' + ISNULL(APP_NAME(), ''), 200)
    FROM inserted n
    WHERE NOT EXISTS (SELECT 1 FROM deleted o WHERE n.Cod_Empresa = o.Cod_Empresa
        AND n.Cod_Ejercicio = o.Cod_Ejercicio AND n.Cod_Almacen = o.Cod_Almacen AND n.Codigo = o.Codigo);
END;

-- A save writes all lines again: those that stay as they are have not been changed.
CREATE TRIGGER Linea_Historial ON Proveedores_Cargos_Atipicos_Lineas AFTER INSERT, UPDATE, DELETE AS
BEGIN
    SET NOCOUNT ON;
    INSERT INTO Historial (Momento, Accion, Cod_Empresa, Cod_Ejercicio, Cod_Almacen, Codigo, Num_Linea, Usuario, Login,
                           Puesto, Antes)
    SELECT GETDATE(), CASE WHEN n.Codigo IS NULL THEN 'baja' ELSE 'cambio' END, o.Cod_Empresa, o.Cod_Ejercicio,
           o.Cod_Almacen, o.Codigo, o.Num_Linea, '', ORIGINAL_LOGIN(),
           LEFT(ISNULL(HOST_NAME(), '') + ' ' + ISNULL(APP_NAME(), ''), 200),
           (SELECT o.Cod_Articulo, o.Descripcion, o.Unidades, o.Precio, o.Observ
            FOR JSON PATH, WITHOUT_ARRAY_WRAPPER, INCLUDE_NULL_VALUES)
    FROM deleted o
        LEFT JOIN inserted n ON n.Cod_Empresa = o.Cod_Empresa AND n.Cod_Ejercicio = o.Cod_Ejercicio
            AND n.Cod_Almacen = o.Cod_Almacen AND n.Codigo = o.Codigo AND n.Num_Linea = o.Num_Linea
    WHERE n.Codigo IS NULL OR EXISTS
        (SELECT n.Cod_Articulo, n.Descripcion, n.Unidades, n.Precio, n.Observ
         EXCEPT SELECT o.Cod_Articulo, o.Descripcion, o.Unidades, o.Precio, o.Observ);
    INSERT INTO Historial (Momento, Accion, Cod_Empresa, Cod_Ejercicio, Cod_Almacen, Codigo, Num_Linea, Usuario, Login,
                           Puesto)
    SELECT GETDATE(), 'alta', n.Cod_Empresa, n.Cod_Ejercicio, n.Cod_Almacen, n.Codigo, n.Num_Linea, '',
           ORIGINAL_LOGIN(), LEFT(ISNULL(HOST_NAME(), '') + ' ' + ISNULL(APP_NAME(), ''), 200)
    FROM inserted n
    WHERE NOT EXISTS (SELECT 1 FROM deleted o WHERE n.Cod_Empresa = o.Cod_Empresa
        AND n.Cod_Ejercicio = o.Cod_Ejercicio AND n.Cod_Almacen = o.Cod_Almacen AND n.Codigo = o.Codigo
        AND n.Num_Linea = o.Num_Linea);
END;

-- Nobody changes a row of it, whatever rights he has; an owner of the database can empty the table (TRUNCATE), or
-- drop it, and no trigger is asked.
CREATE TRIGGER Historial_Firme ON Historial AFTER UPDATE, DELETE AS
BEGIN
    THROW 50000, 'El historial no se cambia ni se borra.', 1;
END;
CREATE TRIGGER Anulaciones_Firmes ON Historial_Anulaciones AFTER UPDATE, DELETE AS
BEGIN
    THROW 50000, 'El historial no se cambia ni se borra.', 1;
END;

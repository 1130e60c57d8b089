-- What holds for whoever works with the tables, whatever his program says, but for the owners of the databases: he is
-- the user that his login is, and a counter does not go back. In Orvalin. Not tried on a server yet.

CREATE TRIGGER Usuario_Suyo ON Proveedores_Cargos_Atipicos AFTER INSERT, UPDATE AS
BEGIN
    SET NOCOUNT ON;
    IF UPDATE(Usuario) AND IS_MEMBER('db_owner') = 0 AND ISNULL(IS_MEMBER('atipicos_suplencia'), 0) = 0
        AND EXISTS (SELECT 1 FROM inserted n WHERE NOT EXISTS
            (SELECT 1 FROM Accesos a WHERE a.Login = ORIGINAL_LOGIN() AND a.Usuario = n.Usuario))
        THROW 50000, 'Este login no puede actuar como ese usuario.', 1;
END;

CREATE TRIGGER Contador_Firme ON Contador_Proveedores_Cargos_Atipicos AFTER UPDATE AS
BEGIN
    SET NOCOUNT ON;
    IF IS_MEMBER('db_owner') = 0 AND EXISTS (SELECT 1 FROM deleted o LEFT JOIN inserted n ON n.Cod_Empresa = o.Cod_Empresa
            AND n.Cod_Ejercicio = o.Cod_Ejercicio AND n.Cod_Almacen = o.Cod_Almacen
        WHERE n.Numero IS NULL OR n.Numero < o.Numero)
        THROW 50000, 'Un contador no vuelve atrás.', 1;
END;

-- The part of it in Bexmor. That entries balance is not asked here: this product asks when a statement ends and not
-- when all of them are committed, and line by line no entry balances. Not tried on a server yet.

CREATE TRIGGER Usuario_Suyo ON Asientos AFTER INSERT AS
BEGIN
    SET NOCOUNT ON;
    IF IS_MEMBER('db_owner') = 0 AND ISNULL(IS_MEMBER('atipicos_suplencia'), 0) = 0
        AND EXISTS (SELECT 1 FROM inserted n WHERE NOT EXISTS (SELECT 1 FROM Orvalin.dbo.Accesos a
            WHERE a.Login = ORIGINAL_LOGIN() AND CAST(a.Usuario AS NVARCHAR(20)) = n.Usuario))
        THROW 50000, 'Este login no puede actuar como ese usuario.', 1;
END;

CREATE TRIGGER Regularizador_Suyo ON Regularizaciones AFTER INSERT AS
BEGIN
    SET NOCOUNT ON;
    IF IS_MEMBER('db_owner') = 0 AND ISNULL(IS_MEMBER('atipicos_suplencia'), 0) = 0
        AND EXISTS (SELECT 1 FROM inserted n WHERE NOT EXISTS (SELECT 1 FROM Orvalin.dbo.Accesos a
            WHERE a.Login = ORIGINAL_LOGIN() AND CAST(a.Usuario AS NVARCHAR(20)) = n.Usuario))
        THROW 50000, 'Este login no puede actuar como ese usuario.', 1;
END;

CREATE TRIGGER Contador_Firme ON Contador_Asientos AFTER UPDATE AS
BEGIN
    SET NOCOUNT ON;
    IF IS_MEMBER('db_owner') = 0 AND EXISTS (SELECT 1 FROM deleted o LEFT JOIN inserted n ON n.Cod_Empresa = o.Cod_Empresa
            AND n.Cod_Ejercicio = o.Cod_Ejercicio
        WHERE n.Numero IS NULL OR n.Numero < o.Numero)
        THROW 50000, 'Un contador no vuelve atrás.', 1;
END;

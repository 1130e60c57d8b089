-- The part of what is kept about charges that begins in Bexmor. Who reverses an entry needs leave to add to
-- Orvalin.dbo.Historial_Anulaciones: ownership does not lead from one database to another. Not tried on a server yet.
CREATE TRIGGER Asiento_Anulado ON Regularizaciones AFTER INSERT AS
BEGIN
    SET NOCOUNT ON;
    INSERT INTO Orvalin.dbo.Historial_Anulaciones (Cod_Empresa, Cod_Ejercicio, Asiento, Por_Ejercicio, Por_Asiento,
                                                   Momento, Usuario, Login, Puesto)
    SELECT Cod_Empresa, Cod_Ejercicio, Asiento, Por_Ejercicio, Por_Asiento, GETDATE(), Usuario, ORIGINAL_LOGIN(),
           LEFT(ISNULL(HOST_NAME(), '') + ' ' + ISNULL(APP_NAME(), ''), 200)
    FROM inserted;
END;

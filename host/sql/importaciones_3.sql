-- From version 2 to 3: a claim is known by its reference and by what it says, and no longer by its file alone. What
-- is remembered stays; a reference that came in several files gets one number after the other.

ALTER TABLE Importaciones ADD Contenido NVARCHAR(64) NOT NULL DEFAULT '';

CREATE TABLE Importaciones_Numeradas (
    Huella        NVARCHAR(64) NOT NULL,
    Referencia    NVARCHAR(60) NOT NULL,
    Vez           SMALLINT NOT NULL,
    Cod_Empresa   SMALLINT NOT NULL,
    Cod_Ejercicio SMALLINT NOT NULL,
    Cod_Almacen   SMALLINT NOT NULL,
    Codigo        NVARCHAR(20) NOT NULL,
    PRIMARY KEY (Cod_Empresa, Referencia, Vez)
);
INSERT INTO Importaciones_Numeradas (Huella, Referencia, Vez, Cod_Empresa, Cod_Ejercicio, Cod_Almacen, Codigo)
SELECT Huella, Referencia,
       ROW_NUMBER() OVER (PARTITION BY Cod_Empresa, Referencia ORDER BY Cod_Ejercicio, Codigo, Vez, Huella),
       Cod_Empresa, Cod_Ejercicio, Cod_Almacen, Codigo
FROM Importaciones;
DELETE FROM Importaciones;
INSERT INTO Importaciones (Huella, Referencia, Vez, Cod_Empresa, Cod_Ejercicio, Cod_Almacen, Codigo)
SELECT Huella, Referencia, Vez, Cod_Empresa, Cod_Ejercicio, Cod_Almacen, Codigo
FROM Importaciones_Numeradas;
DROP TABLE Importaciones_Numeradas;

CREATE UNIQUE INDEX Importaciones_Referencia ON Importaciones (Cod_Empresa, Referencia, Vez);

-- Which entry of a charge that is there no more was reversed by which one. Posted rows are never changed: this says
-- of both what they are. The host's own; an entry is in it once, so that it is reversed once.

CREATE TABLE Regularizaciones (
    Cod_Empresa   SMALLINT NOT NULL,
    Cod_Ejercicio SMALLINT NOT NULL,
    Asiento       INT NOT NULL,
    Por_Ejercicio SMALLINT NOT NULL,                -- year and number of the entry that reverses it,
    Por_Asiento   INT NOT NULL,                     -- 0: somebody has done it by hand
    Usuario       NVARCHAR(20) NOT NULL,
    Hora          DATETIME NOT NULL,
    PRIMARY KEY (Cod_Empresa, Cod_Ejercicio, Asiento)
);

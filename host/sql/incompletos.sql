-- Entries of which the accounting library could not store a part, and why. What was stored before is kept, as it has
-- always been; only these may be stored without balancing. The host's own.

CREATE TABLE Asientos_Incompletos (
    Cod_Empresa   SMALLINT NOT NULL,
    Cod_Ejercicio SMALLINT NOT NULL,
    Numero        INT NOT NULL,
    Motivo        NVARCHAR(200) NOT NULL,
    PRIMARY KEY (Cod_Empresa, Cod_Ejercicio, Numero)
);

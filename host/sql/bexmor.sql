-- Accounting database. Accounts follow the Spanish general plan (RD 1514/2007).

CREATE TABLE Esquema (
    Version INT NOT NULL PRIMARY KEY
);
INSERT INTO Esquema (Version) VALUES (6);

CREATE TABLE Empresas (
    Codigo         SMALLINT NOT NULL PRIMARY KEY,
    Nombre         NVARCHAR(80) NOT NULL,
    NIF            NVARCHAR(15) NOT NULL,
    LongitudCuenta SMALLINT NOT NULL,               -- digits of an account in its plan
    CuentaBancoPago NVARCHAR(12) NOT NULL           -- the bank that it pays from
);

CREATE TABLE Parametros (
    Cod_Empresa SMALLINT NOT NULL REFERENCES Empresas (Codigo),
    Clave       NVARCHAR(60) NOT NULL,
    Valor       NVARCHAR(200) NOT NULL,
    PRIMARY KEY (Cod_Empresa, Clave)
);

CREATE TABLE Ejercicios (
    Cod_Empresa SMALLINT NOT NULL REFERENCES Empresas (Codigo),
    Ejercicio   SMALLINT NOT NULL,
    Inicio      DATETIME NOT NULL,
    Fin         DATETIME NOT NULL,
    PRIMARY KEY (Cod_Empresa, Ejercicio)
);

CREATE TABLE Cuentas (
    Cod_Empresa   SMALLINT NOT NULL,
    Cod_Ejercicio SMALLINT NOT NULL,
    Cuenta        NVARCHAR(12) NOT NULL,
    Nombre        NVARCHAR(80) NOT NULL,
    PRIMARY KEY (Cod_Empresa, Cod_Ejercicio, Cuenta),
    FOREIGN KEY (Cod_Empresa, Cod_Ejercicio) REFERENCES Ejercicios (Cod_Empresa, Ejercicio)
);

CREATE TABLE Tipos_Impuesto (
    Cod_Empresa SMALLINT NOT NULL REFERENCES Empresas (Codigo),
    Codigo      SMALLINT NOT NULL,
    Nombre      NVARCHAR(40) NOT NULL,
    Porcentaje  MONEY NOT NULL,
    Imp_CtaRep  NVARCHAR(12) NOT NULL,              -- account of output tax
    PRIMARY KEY (Cod_Empresa, Codigo)
);

CREATE TABLE Tipos_Doc (
    Codigo SMALLINT NOT NULL PRIMARY KEY,
    Nombre NVARCHAR(40) NOT NULL
);

CREATE TABLE Formas_Pago (
    Codigo      SMALLINT NOT NULL PRIMARY KEY,
    Nombre      NVARCHAR(60) NOT NULL,
    GenerarPrev BIT NOT NULL,                       -- whether it produces payment forecasts
    NroVtos     SMALLINT NOT NULL,                  -- instalments
    PrimerVto   SMALLINT NOT NULL,                  -- days to the first
    RestoVtos   SMALLINT NOT NULL,                  -- days between the others
    TipoDoc     SMALLINT NOT NULL REFERENCES Tipos_Doc (Codigo)
);

-- The last entry number given out in each company and year.
CREATE TABLE Contador_Asientos (
    Cod_Empresa   SMALLINT NOT NULL,
    Cod_Ejercicio SMALLINT NOT NULL,
    Numero        INT NOT NULL,
    PRIMARY KEY (Cod_Empresa, Cod_Ejercicio),
    FOREIGN KEY (Cod_Empresa, Cod_Ejercicio) REFERENCES Ejercicios (Cod_Empresa, Ejercicio)
);

CREATE TABLE Asientos (
    Cod_Empresa   SMALLINT NOT NULL,
    Cod_Ejercicio SMALLINT NOT NULL,
    Numero        INT NOT NULL,
    Fecha         DATETIME NOT NULL,
    Usuario       NVARCHAR(20) NOT NULL,
    PRIMARY KEY (Cod_Empresa, Cod_Ejercicio, Numero),
    FOREIGN KEY (Cod_Empresa, Cod_Ejercicio) REFERENCES Ejercicios (Cod_Empresa, Ejercicio)
);

CREATE TABLE Apuntes (
    Cod_Empresa        SMALLINT NOT NULL,
    Cod_Ejercicio      SMALLINT NOT NULL,
    Asiento            INT NOT NULL,
    Linea              INT NOT NULL,
    Cuenta             NVARCHAR(12) NOT NULL,
    ConceptoAutomatico NVARCHAR(10) NOT NULL,
    Concepto           NVARCHAR(200) NOT NULL,
    Documento          NVARCHAR(20) NOT NULL,
    Departamento       NVARCHAR(10) NOT NULL,
    Debe               MONEY NOT NULL,
    Haber              MONEY NOT NULL,
    TipoImpuesto       SMALLINT NOT NULL,           -- 0: the line bears no tax
    PorcentajeImpuesto MONEY NOT NULL,
    BaseImpuesto       MONEY NOT NULL,
    PRIMARY KEY (Cod_Empresa, Cod_Ejercicio, Asiento, Linea),
    FOREIGN KEY (Cod_Empresa, Cod_Ejercicio, Asiento) REFERENCES Asientos (Cod_Empresa, Cod_Ejercicio, Numero),
    FOREIGN KEY (Cod_Empresa, Cod_Ejercicio, Cuenta) REFERENCES Cuentas (Cod_Empresa, Cod_Ejercicio, Cuenta)
);

CREATE TABLE Registro_Impuestos (
    Cod_Empresa   SMALLINT NOT NULL,
    Cod_Ejercicio SMALLINT NOT NULL,
    Asiento       INT NOT NULL,
    Linea         INT NOT NULL,                     -- the line of the entry that bears the tax
    Clase         SMALLINT NOT NULL,                -- 2: output tax
    Indicador     SMALLINT NOT NULL,
    Fecha         DATETIME NOT NULL,
    Documento     NVARCHAR(20) NOT NULL,
    Base          MONEY NOT NULL,
    TipoImpuesto  SMALLINT NOT NULL,
    Cuota         MONEY NOT NULL,
    TotalImpuesto MONEY NOT NULL,
    PRIMARY KEY (Cod_Empresa, Cod_Ejercicio, Asiento, Linea),
    FOREIGN KEY (Cod_Empresa, Cod_Ejercicio, Asiento, Linea)
        REFERENCES Apuntes (Cod_Empresa, Cod_Ejercicio, Asiento, Linea)
);

CREATE TABLE Previsiones (
    Cod_Empresa   SMALLINT NOT NULL,
    Cod_Ejercicio SMALLINT NOT NULL,
    Asiento       INT NOT NULL,
    Numero        INT NOT NULL,                     -- 1, 2, 3, … within the entry
    Cuenta        NVARCHAR(12) NOT NULL,
    Departamento  NVARCHAR(10) NOT NULL,
    Importe       MONEY NOT NULL,
    TipoDoc       SMALLINT NOT NULL,                -- 0: none
    Vencimiento   DATETIME NOT NULL,
    Banco         NVARCHAR(12) NOT NULL,
    PRIMARY KEY (Cod_Empresa, Cod_Ejercicio, Asiento, Numero),
    FOREIGN KEY (Cod_Empresa, Cod_Ejercicio, Asiento) REFERENCES Asientos (Cod_Empresa, Cod_Ejercicio, Numero),
    FOREIGN KEY (Cod_Empresa, Cod_Ejercicio, Cuenta) REFERENCES Cuentas (Cod_Empresa, Cod_Ejercicio, Cuenta)
);

-- Management database. Declared types say what a column holds: MONEY amounts, DATETIME dates, BIT yes or no.

CREATE TABLE Esquema (
    Version INT NOT NULL PRIMARY KEY
);
INSERT INTO Esquema (Version) VALUES (6);

CREATE TABLE Empresas (
    Codigo             SMALLINT NOT NULL PRIMARY KEY,
    Nombre             NVARCHAR(80) NOT NULL,
    NIF                NVARCHAR(15) NOT NULL,
    Domicilio          NVARCHAR(80),
    CodigoPostal       NVARCHAR(10),
    Poblacion          NVARCHAR(60),
    Provincia          NVARCHAR(60),
    FormaPago          SMALLINT NOT NULL,           -- terms of the company, for suppliers without their own
    DiaPago_1          SMALLINT NOT NULL DEFAULT 0, -- days of the month; 0: none
    DiaPago_2          SMALLINT NOT NULL DEFAULT 0,
    DecimalesImporte   SMALLINT NOT NULL DEFAULT 2,
    DecimalesCosto     SMALLINT NOT NULL DEFAULT 4,
    DecimalesPrecio    SMALLINT NOT NULL DEFAULT 3,
    AlmacenDefecto     SMALLINT NOT NULL,
    EnlaceContable     INT NOT NULL,                -- 1: saved charges are posted to accounting
    EmpresaProveedores SMALLINT NOT NULL,           -- company under which suppliers are kept
    RaizProveedores    INT NOT NULL                 -- root of suppliers in the plan of accounts
);

CREATE TABLE Parametros (
    Cod_Empresa SMALLINT NOT NULL REFERENCES Empresas (Codigo),
    Clave       NVARCHAR(60) NOT NULL,
    Valor       NVARCHAR(200) NOT NULL,
    PRIMARY KEY (Cod_Empresa, Clave)
);

CREATE TABLE Tipos_Impuesto (
    Codigo     SMALLINT NOT NULL PRIMARY KEY,
    Nombre     NVARCHAR(40) NOT NULL,
    Porcentaje MONEY NOT NULL
);

CREATE TABLE SGD_Usuarios (
    Codigo INT NOT NULL PRIMARY KEY,
    Nombre NVARCHAR(60) NOT NULL
);

CREATE TABLE Almacenes (
    Cod_Empresa         SMALLINT NOT NULL REFERENCES Empresas (Codigo),
    Codigo              SMALLINT NOT NULL,
    Nombre              NVARCHAR(60) NOT NULL,
    Domicilio           NVARCHAR(80),
    CodigoPostal        NVARCHAR(10),
    Poblacion           NVARCHAR(60),
    EmpContable         SMALLINT NOT NULL,          -- accounting company; 0: none
    CtaIngresosAtipicos NVARCHAR(12) NOT NULL,
    PRIMARY KEY (Cod_Empresa, Codigo)
);

CREATE TABLE Proveedores (
    Cod_Empresa         SMALLINT NOT NULL REFERENCES Empresas (Codigo),
    Codigo              INT NOT NULL,
    Nombre              NVARCHAR(80) NOT NULL,
    NIF                 NVARCHAR(15),
    Domicilio           NVARCHAR(80),
    CodigoPostal        NVARCHAR(10),
    Poblacion           NVARCHAR(60),
    Cta_Proveedor       NVARCHAR(12) NOT NULL DEFAULT '', -- empty accounts are formed from their roots
    Cta_Deudor          NVARCHAR(12) NOT NULL DEFAULT '',
    Cta_DeudaCortoPlazo NVARCHAR(12) NOT NULL DEFAULT '',
    CtaBancoPago        NVARCHAR(12) NOT NULL DEFAULT '',
    Cod_FPago           SMALLINT NOT NULL DEFAULT 0,      -- 0: the terms of the company
    DiaPago_1           SMALLINT NOT NULL DEFAULT 0,
    DiaPago_2           SMALLINT NOT NULL DEFAULT 0,
    PRIMARY KEY (Cod_Empresa, Codigo)
);

CREATE TABLE Articulos (
    Cod_Empresa         SMALLINT NOT NULL REFERENCES Empresas (Codigo),
    Codigo              INT NOT NULL,
    Nombre              NVARCHAR(80) NOT NULL,
    CtaIngresosAtipicos NVARCHAR(12) NOT NULL DEFAULT '', -- empty: the account of the warehouse
    PRIMARY KEY (Cod_Empresa, Codigo)
);

-- A charge outlives its warehouse, supplier, article and user: none of them is a foreign key.
CREATE TABLE Proveedores_Cargos_Atipicos (
    Cod_Empresa      SMALLINT NOT NULL REFERENCES Empresas (Codigo),
    Cod_Ejercicio    SMALLINT NOT NULL,
    Cod_Almacen      SMALLINT NOT NULL,
    Codigo           NVARCHAR(20) NOT NULL,
    Proveedor        INT NOT NULL,
    Fecha            DATETIME NOT NULL,
    Importe          MONEY NOT NULL,
    Asiento          INT NOT NULL,
    EmpContable      SMALLINT NOT NULL,
    EjContable       SMALLINT NOT NULL,
    Usuario          INT NOT NULL,
    Hora             DATETIME NOT NULL,
    Observ           NVARCHAR(4000),
    Cod_Compra       INT NOT NULL,
    Documento        INT NOT NULL,
    Impuesto         MONEY NOT NULL,
    Impuesto_Importe MONEY NOT NULL,
    Tipo             INT NOT NULL,
    Almacen          AS (Cod_Almacen), -- the existence query asks for it
    PRIMARY KEY (Cod_Empresa, Cod_Ejercicio, Cod_Almacen, Codigo)
);
CREATE INDEX Proveedores_Cargos_Atipicos_Lista
    ON Proveedores_Cargos_Atipicos (Cod_Empresa, Fecha DESC, Cod_Almacen ASC, Codigo DESC);

CREATE TABLE Proveedores_Cargos_Atipicos_Lineas (
    Cod_Empresa   SMALLINT NOT NULL,
    Cod_Ejercicio SMALLINT NOT NULL,
    Cod_Almacen   SMALLINT NOT NULL,
    Codigo        NVARCHAR(20) NOT NULL,
    Num_Linea     INT NOT NULL,
    Cod_Articulo  INT NOT NULL,
    Descripcion   NVARCHAR(4000),
    Unidades      MONEY NOT NULL,
    Precio        MONEY NOT NULL,
    Observ        NVARCHAR(4000),
    PRIMARY KEY (Cod_Empresa, Cod_Ejercicio, Cod_Almacen, Codigo, Num_Linea),
    FOREIGN KEY (Cod_Empresa, Cod_Ejercicio, Cod_Almacen, Codigo)
        REFERENCES Proveedores_Cargos_Atipicos (Cod_Empresa, Cod_Ejercicio, Cod_Almacen, Codigo)
);

-- The last number given out in each company, year and warehouse.
CREATE TABLE Contador_Proveedores_Cargos_Atipicos (
    Cod_Empresa   SMALLINT NOT NULL REFERENCES Empresas (Codigo),
    Cod_Ejercicio SMALLINT NOT NULL,
    Cod_Almacen   SMALLINT NOT NULL,
    Numero        INT NOT NULL,
    PRIMARY KEY (Cod_Empresa, Cod_Ejercicio, Cod_Almacen)
);

-- Which claim (its reference, and the digest of what it says) became which charge, so that none is recorded twice.
CREATE TABLE Importaciones (
    Huella        NVARCHAR(64) NOT NULL, -- of the file in which it came
    Referencia    NVARCHAR(60) NOT NULL,
    Vez           SMALLINT NOT NULL, -- 1, and one more each time it is recorded again on purpose
    Cod_Empresa   SMALLINT NOT NULL REFERENCES Empresas (Codigo),
    Cod_Ejercicio SMALLINT NOT NULL,
    Cod_Almacen   SMALLINT NOT NULL,
    Codigo        NVARCHAR(20) NOT NULL,
    Contenido     NVARCHAR(64) NOT NULL DEFAULT '', -- empty: recorded by a program that knew the file alone
    PRIMARY KEY (Cod_Empresa, Huella, Referencia, Vez)
);
CREATE UNIQUE INDEX Importaciones_Referencia ON Importaciones (Cod_Empresa, Referencia, Vez);

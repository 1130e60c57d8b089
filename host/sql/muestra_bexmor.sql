-- The accounting side of the sample company: two companies with plans of 8 and 9 digits.

INSERT INTO Empresas (Codigo, Nombre, NIF, LongitudCuenta, CuentaBancoPago)
VALUES (1, 'Comercial Drago Sur, S.L.', 'B38000011', 8, '57200001'),
       (2, 'Drago Oriental, S.L.', 'B35000037', 9, '572000001');

INSERT INTO Parametros (Cod_Empresa, Clave, Valor)
VALUES (1, 'ODBCBaseDatos', 'Bexmor'),
       (2, 'ODBCBaseDatos', 'Bexmor');

INSERT INTO Ejercicios (Cod_Empresa, Ejercicio, Inicio, Fin)
VALUES (1, 2024, '01/01/2024', '31/12/2024'),
       (1, 2025, '01/01/2025', '31/12/2025'),
       (1, 2026, '01/01/2026', '31/12/2026'),
       (1, 2027, '01/01/2027', '31/12/2027'),
       (2, 2024, '01/01/2024', '31/12/2024'),
       (2, 2025, '01/01/2025', '31/12/2025'),
       (2, 2026, '01/01/2026', '31/12/2026'),
       (2, 2027, '01/01/2027', '31/12/2027');

-- Accounts that both plans have in every year, written as root and number.
WITH Plan (Raiz, Numero, Nombre) AS (
    VALUES ('477', 7, 'IGIC repercutido 7 %'),
           ('477', 3, 'IGIC repercutido 3 %'),
           ('572', 1, 'Banco Insular del Teide, c/c'),
           ('572', 2, 'Caja Rural de Tacande, c/c'),
           ('608', 0, 'Devoluciones de compras'),
           ('609', 0, 'Rappels por compras'),
           ('624', 0, 'Transportes'),
           ('759', 1, 'Ingresos atípicos Güímar'),
           ('759', 2, 'Ingresos atípicos La Orotava'),
           ('759', 3, 'Ingresos atípicos Arrecife'),
           ('759', 4, 'Ingresos atípicos Puerto del Rosario'),
           ('759', 5, 'Ingresos atípicos muelle de Arrecife'))
INSERT INTO Cuentas (Cod_Empresa, Cod_Ejercicio, Cuenta, Nombre)
SELECT e.Codigo, j.Ejercicio,
       p.Raiz || substr('000000000' || p.Numero, 13 - e.LongitudCuenta + length('' || p.Numero)), p.Nombre
FROM Plan p CROSS JOIN Empresas e INNER JOIN Ejercicios j ON j.Cod_Empresa = e.Codigo;

-- Each supplier as supplier, as debtor and as short-term creditor.
WITH Proveedores (Codigo, Nombre) AS (
    VALUES (101, 'Aguas de Ucanca, S.A.'),
           (102, 'Bodegas Peña Bermeja, S.L.'),
           (103, 'Ñandú Exportaciones, S.L.'),
           (104, 'Conservas La Graciosa, S.A.'),
           (105, 'Lácteos Tinerfeños Añaza, S.A.'),
           (106, 'Quesería Majorera Tiscamanita'),
           (107, 'Maquinaria Frigorífica Barranco, S.L.'),
           (108, 'Envases y Cartón Achamán, S.A.'),
           (109, 'Transportes Garajonay, S.C.L.'),
           (110, 'Distribuidora Peninsular Ibáñez, S.A.'),
           (111, 'Cafés Teno Alto'),
           (112, 'Droguería Güize, S.L.'),
           (113, 'Franquicias El Timple, S.L.'),
           (114, 'Plátanos y Papayas Tazacorte, S.A.T.')),
     Raices (Raiz, Titulo) AS (
    VALUES ('400', ''), ('440', ' (deudor)'), ('521', ' (deuda a corto plazo)'))
INSERT INTO Cuentas (Cod_Empresa, Cod_Ejercicio, Cuenta, Nombre)
SELECT e.Codigo, j.Ejercicio,
       r.Raiz || substr('000000000' || p.Codigo, 13 - e.LongitudCuenta + length('' || p.Codigo)), p.Nombre || r.Titulo
FROM Proveedores p CROSS JOIN Raices r CROSS JOIN Empresas e INNER JOIN Ejercicios j ON j.Cod_Empresa = e.Codigo;

-- Accounts that stand in a supplier's or an article's own record, which both plans know.
WITH Propias (Cuenta, Nombre) AS (
    VALUES ('40009110', 'Distribuidora Peninsular Ibáñez, S.A.'),
           ('44009110', 'Distribuidora Peninsular Ibáñez, S.A. (deudor)'),
           ('52109110', 'Distribuidora Peninsular Ibáñez, S.A. (deuda a corto plazo)'),
           ('44009111', 'Cafés Teno Alto (deudor)'),
           ('75900010', 'Ingresos atípicos, bebidas'),
           ('75900011', 'Ingresos atípicos, maquinaria'))
INSERT INTO Cuentas (Cod_Empresa, Cod_Ejercicio, Cuenta, Nombre)
SELECT j.Cod_Empresa, j.Ejercicio, p.Cuenta, p.Nombre
FROM Propias p CROSS JOIN Ejercicios j;

INSERT INTO Tipos_Impuesto (Cod_Empresa, Codigo, Nombre, Porcentaje, Imp_CtaRep)
VALUES (1, 1, 'IGIC general', 7, '47700007'),
       (1, 2, 'IGIC reducido', 3, '47700003'),
       (2, 1, 'IGIC general', 7, '477000007'),
       (2, 2, 'IGIC reducido', 3, '477000003');

INSERT INTO Tipos_Doc (Codigo, Nombre)
VALUES (1, 'Recibo domiciliado'),
       (2, 'Transferencia'),
       (3, 'Pagaré'),
       (4, 'Compensación');

INSERT INTO Formas_Pago (Codigo, Nombre, GenerarPrev, NroVtos, PrimerVto, RestoVtos, TipoDoc)
VALUES (1, 'Contado', 1, 1, 0, 0, 2),
       (2, 'A 30 días', 1, 1, 30, 0, 1),
       (3, 'A 30, 60 y 90 días', 1, 3, 30, 30, 3),
       (4, 'En doce mensualidades', 1, 12, 30, 30, 1),
       (5, 'Se compensa en compras', 0, 1, 0, 0, 4),
       (6, 'A 60 días', 1, 1, 60, 0, 2);

-- The sample company: an invented wholesaler of the Canary Islands.

INSERT INTO Empresas (Codigo, Nombre, NIF, Domicilio, CodigoPostal, Poblacion, Provincia, FormaPago, DiaPago_1,
                      DiaPago_2, DecimalesImporte, DecimalesCosto, DecimalesPrecio, AlmacenDefecto, EnlaceContable,
                      EmpresaProveedores, RaizProveedores)
VALUES (1, 'Comercial Drago Sur, S.L.', 'B38000011', 'Polígono Valle de Güímar, manzana 7', '38509', 'Güímar',
        'Santa Cruz de Tenerife', 2, 5, 0, 2, 4, 3, 1, 1, 1, 400),
       -- Keeps its suppliers under company 1, and is not posted.
       (2, 'Drago Logística Insular, S.L.', 'B35000029', 'Muelle de los Mármoles, nave 3', '35500', 'Arrecife',
        'Las Palmas', 3, 10, 25, 2, 4, 3, 1, 0, 1, 400);

INSERT INTO Parametros (Cod_Empresa, Clave, Valor)
VALUES (1, 'OficinaCentral', '1'),
       (1, 'Proveedores_AtipcosImpuesto', '1'),
       (1, 'Raiz_ProveedoresDeudor', '440'),
       (1, 'Raiz_ProveedoresDeudaCortoPlazo', '521'),
       (1, 'Conta_CtoAutIgicDebe', '47'),
       (1, 'Concepto_Atipicos_Deudor', 'Reclamación %DOCUMENTO%'),
       (1, 'Concepto_Atipicos_Ingreso', 'Ingreso atípico %NOMBREPROVEEDOR%'),
       (1, 'Concepto_Atipicos_Impuesto', 'IGIC atípico %NOMBREPROVEEDOR%'),
       (1, 'Concepto_Atipicos_Proveedor', 'N/Cargo %DOCUMENTO%'),
       (1, 'Proveedores_DptoIngresoRappels', '90'),
       (1, 'GenerarPrevPagos', '1'),
       (1, 'Proveedores_AtipicosDispImpresoDefault', '1'),
       (1, 'Proveedores_AtipicosDisp2ImpresoDefault', '2'),
       (2, 'OficinaCentral', '0'),
       (2, 'Proveedores_AtipcosImpuesto', '2'),
       (2, 'GenerarPrevPagos', '0');

-- In all else the second company is set up as the first.
INSERT INTO Parametros (Cod_Empresa, Clave, Valor)
SELECT 2, Clave, Valor
FROM Parametros
WHERE Cod_Empresa = 1 AND Clave NOT IN ('OficinaCentral', 'Proveedores_AtipcosImpuesto', 'GenerarPrevPagos');

INSERT INTO Tipos_Impuesto (Codigo, Nombre, Porcentaje)
VALUES (1, 'IGIC general', 7),
       (2, 'IGIC reducido', 3);

INSERT INTO SGD_Usuarios (Codigo, Nombre)
VALUES (1, 'Begoña Hernández'),
       (2, 'Íñigo Cabrera'),
       (3, 'Candelaria Méndez'),
       (12, 'Turno de noche');

INSERT INTO Almacenes (Cod_Empresa, Codigo, Nombre, Domicilio, CodigoPostal, Poblacion, EmpContable,
                       CtaIngresosAtipicos)
VALUES (1, 1, 'Güímar central', 'Polígono Valle de Güímar, manzana 7', '38509', 'Güímar', 1, '75900001'),
       (1, 2, 'La Orotava', 'Camino Torreón, 12', '38300', 'La Orotava', 1, '75900002'),
       (1, 3, 'Arrecife', 'Muelle de los Mármoles, nave 3', '35500', 'Arrecife', 2, '759000003'),
       (1, 4, 'Puerto del Rosario', 'Calle El Matorral, 40', '35610', 'Puerto del Rosario', 2, '759000004'),
       (1, 5, 'Depósito sin contabilidad', 'Calle La Marina, 1', '38001', 'Santa Cruz de Tenerife', 0, ''),
       (2, 1, 'Muelle de Arrecife', 'Muelle de los Mármoles, nave 3', '35500', 'Arrecife', 2, '759000005');

INSERT INTO Proveedores (Cod_Empresa, Codigo, Nombre, NIF, Domicilio, CodigoPostal, Poblacion, Cta_Proveedor,
                         Cta_Deudor, Cta_DeudaCortoPlazo, CtaBancoPago, Cod_FPago, DiaPago_1, DiaPago_2)
VALUES
    -- One instalment; no pay day, one, two.
    (1, 101, 'Aguas de Ucanca, S.A.', 'A38100101', 'Carretera de Vilaflor, km 3', '38613', 'Vilaflor', '', '', '',
     '57200001', 2, 0, 0),
    (1, 102, 'Bodegas Peña Bermeja, S.L.', 'B38100102', 'Calle El Lagar, 8', '38360', 'El Sauzal', '', '', '',
     '57200002', 2, 5, 0),
    (1, 103, 'Ñandú Exportaciones, S.L.', 'B35100103', 'Avenida Marítima, 100', '35004', 'Las Palmas', '', '', '', '',
     6, 10, 25),
    -- Three instalments; no pay day, one, two.
    (1, 104, 'Conservas La Graciosa, S.A.', 'A35100104', 'Calle García Escámez, 2', '35540', 'Caleta de Sebo', '', '',
     '', '57200001', 3, 0, 0),
    (1, 105, 'Lácteos Tinerfeños Añaza, S.A.', 'A38100105', 'Polígono El Mayorazgo, 31', '38110',
     'Santa Cruz de Tenerife', '', '', '', '57200002', 3, 31, 0),
    (1, 106, 'Quesería Majorera Tiscamanita', 'X1100106L', 'Calle La Rosa, 5', '35638', 'Tuineje', '', '', '', '', 3,
     15, 30),
    -- Twelve instalments; no pay day, one, two.
    (1, 107, 'Maquinaria Frigorífica Barranco, S.L.', 'B38100107', 'Calle Subida al Mayorazgo, 17', '38110',
     'Santa Cruz de Tenerife', '', '', '', '57200001', 4, 0, 0),
    (1, 108, 'Envases y Cartón Achamán, S.A.', 'A38100108', 'Polígono San Jerónimo, 4', '38312', 'La Orotava', '', '',
     '', '', 4, 20, 0),
    (1, 109, 'Transportes Garajonay, S.C.L.', 'F38100109', 'Muelle de Los Cristianos', '38650', 'Arona', '', '', '',
     '57200002', 4, 1, 15),
    -- With accounts of its own, all of them or some.
    (1, 110, 'Distribuidora Peninsular Ibáñez, S.A.', 'A28100110', 'Calle Méndez Álvaro, 61', '28045', 'Madrid',
     '40009110', '44009110', '52109110', '57200001', 2, 10, 0),
    (1, 111, 'Cafés Teno Alto', '11100111H', 'Plaza de San Jerónimo, 1', '38480', 'Buenavista del Norte', '', '44009111',
     '', '', 6, 0, 0),
    -- Without terms of its own: those of the company.
    (1, 112, 'Droguería Güize, S.L.', 'B38100112', 'Calle Calvario, 30', '38570', 'Fasnia', '', '', '', '', 0, 0, 0),
    -- Terms that produce no forecasts.
    (1, 113, 'Franquicias El Timple, S.L.', 'B35100113', 'Calle León y Castillo, 9', '35500', 'Arrecife', '', '', '', '',
     5, 0, 0),
    (1, 114, 'Plátanos y Papayas Tazacorte, S.A.T.', 'V38100114', 'Barranco de las Angustias', '38770', 'Tazacorte',
     '', '', '', '57200002', 1, 0, 0);

INSERT INTO Articulos (Cod_Empresa, Codigo, Nombre, CtaIngresosAtipicos)
VALUES (1, 1001, 'Agua mineral 1,5 l (caja de 6)', ''),
       (1, 1002, 'Agua con gas 0,5 l (caja de 24)', ''),
       (1, 1003, 'Vino tinto joven 75 cl', '75900010'),
       (1, 1004, 'Vino malvasía seco 75 cl', '75900010'),
       (1, 1005, 'Aceite de oliva 5 l', ''),
       (1, 1006, 'Atún en aceite, lata de 900 g', ''),
       (1, 1007, 'Mejillón en escabeche 115 g', ''),
       (1, 1008, 'Leche entera 1 l (caja de 12)', ''),
       (1, 1009, 'Yogur natural (paquete de 4)', ''),
       (1, 1010, 'Queso curado de cabra, kg', ''),
       (1, 1011, 'Queso tierno ahumado, kg', ''),
       (1, 1012, 'Gofio de millo 1 kg', ''),
       (1, 1013, 'Café molido natural 250 g', ''),
       (1, 1014, 'Azúcar blanquilla 1 kg', ''),
       (1, 1015, 'Harina de trigo 25 kg', ''),
       (1, 1016, 'Plátano de primera, kg', ''),
       (1, 1017, 'Papaya, kg', ''),
       (1, 1018, 'Papa bonita, saco de 25 kg', ''),
       (1, 1019, 'Detergente líquido 5 l', ''),
       (1, 1020, 'Lejía 2 l', ''),
       (1, 1021, 'Papel de cocina (fardo de 24)', ''),
       (1, 1022, 'Caja de cartón 60×40×40', ''),
       (1, 1023, 'Film estirable 23 µm', ''),
       (1, 1024, 'Palé europeo', ''),
       (1, 1025, 'Vitrina expositora de frío', '75900011'),
       (1, 1026, 'Arcón congelador 400 l', '75900011'),
       (1, 1027, 'Mojo picón 200 g', ''),
       (1, 1028, 'Almendra tostada, kg', ''),
       (1, 1029, 'Miel de palma 350 g', ''),
       (1, 1030, 'Ron añejo 70 cl', '75900010'),
       (1, 1031, 'Refresco de limón 33 cl (caja de 24)', ''),
       (1, 1032, 'Servilletas 40×40 (paquete de 50)', '');

-- The second company has a record of its own of the few suppliers and articles that it deals with.
INSERT INTO Proveedores (Cod_Empresa, Codigo, Nombre, NIF, Domicilio, CodigoPostal, Poblacion, Cta_Proveedor,
                         Cta_Deudor, Cta_DeudaCortoPlazo, CtaBancoPago, Cod_FPago, DiaPago_1, DiaPago_2)
SELECT 2, Codigo, Nombre, NIF, Domicilio, CodigoPostal, Poblacion, Cta_Proveedor, Cta_Deudor, Cta_DeudaCortoPlazo,
       '', Cod_FPago, DiaPago_1, DiaPago_2
FROM Proveedores
WHERE Cod_Empresa = 1 AND Codigo IN (103, 104, 109, 112, 113);

INSERT INTO Articulos (Cod_Empresa, Codigo, Nombre, CtaIngresosAtipicos)
SELECT 2, Codigo, Nombre, CtaIngresosAtipicos
FROM Articulos
WHERE Cod_Empresa = 1 AND Codigo IN (1006, 1007, 1022, 1023, 1024, 1026);

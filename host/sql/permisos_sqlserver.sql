-- Roles of those who work with the databases, with no more rights than their work needs. Run after `atipicos crear`,
-- in one batch and one transaction: after an error nothing has been changed. It can be run again:
--     sqlcmd -b -S SERVIDOR -i host/sql/permisos_sqlserver.sql
-- It needs an owner of both databases (db_owner in each, or sysadmin), and then for each person, whose login exists on
-- the server:
--     USE Orvalin; CREATE USER begona FOR LOGIN begona; ALTER ROLE atipicos_puesto ADD MEMBER begona;
--     USE Bexmor;  CREATE USER begona FOR LOGIN begona; ALTER ROLE atipicos_puesto ADD MEMBER begona;
--     atipicos accesos begona 2 --conexion …
-- which says that begona is user 2. Who may act as any user, with --usuario, is in atipicos_suplencia of both besides.
--
-- The program works in one session, in Orvalin, and reaches Bexmor from there in the same transaction. So both are
-- databases of one instance, and the same login has a user in each: a user with a password of its own (WITH PASSWORD,
-- of a contained database) or an application role gets into one of them only, and is told error 916 by the other.
-- Mirrored databases know no such transaction; those of an availability group do with DTC_SUPPORT = PER_DB.

SET XACT_ABORT ON;
IF DB_ID('Orvalin') IS NULL OR DB_ID('Bexmor') IS NULL
    OR OBJECT_ID('Orvalin.dbo.Accesos') IS NULL OR OBJECT_ID('Bexmor.dbo.Asientos_Incompletos') IS NULL
    THROW 50000, 'Las tablas no están, o son de una versión anterior: ejecute antes atipicos crear, o atipicos actualizar.', 1;
BEGIN TRANSACTION;

USE Orvalin;
IF IS_MEMBER('db_owner') = 0 THROW 50000, 'Esto lo ejecuta un propietario de Orvalin (db_owner).', 1;
IF DATABASE_PRINCIPAL_ID('atipicos_consulta') IS NULL CREATE ROLE atipicos_consulta;
IF DATABASE_PRINCIPAL_ID('atipicos_puesto') IS NULL CREATE ROLE atipicos_puesto;
IF DATABASE_PRINCIPAL_ID('atipicos_suplencia') IS NULL CREATE ROLE atipicos_suplencia;
ALTER ROLE atipicos_consulta ADD MEMBER atipicos_puesto;

-- Who only looks: listar, mostrar, imprimir, verificar.
GRANT SELECT ON SCHEMA::dbo TO atipicos_consulta;

-- Who records charges. Counters go forward alone, and a login is one user: triggers see to both.
GRANT INSERT, UPDATE, DELETE ON dbo.Proveedores_Cargos_Atipicos TO atipicos_puesto;
GRANT INSERT, UPDATE, DELETE ON dbo.Proveedores_Cargos_Atipicos_Lineas TO atipicos_puesto;
GRANT INSERT, UPDATE ON dbo.Contador_Proveedores_Cargos_Atipicos TO atipicos_puesto;
GRANT INSERT ON dbo.Importaciones TO atipicos_puesto;

-- Who reads what has been done to charges, by whom and from where: the triggers write it, with the rights of the tables'
-- owner. A member is put into it, and not into atipicos_consulta, to which it is denied.
IF DATABASE_PRINCIPAL_ID('atipicos_historial') IS NULL CREATE ROLE atipicos_historial;
GRANT SELECT ON SCHEMA::dbo TO atipicos_historial;
DENY SELECT ON dbo.Historial TO atipicos_consulta;
DENY SELECT ON dbo.Historial_Anulaciones TO atipicos_consulta;
-- Ownership does not lead from Bexmor to here: who reverses an entry adds to it himself.
GRANT INSERT ON dbo.Historial_Anulaciones TO atipicos_puesto;

USE Bexmor;
IF IS_MEMBER('db_owner') = 0 THROW 50000, 'Esto lo ejecuta un propietario de Bexmor (db_owner).', 1;
IF DATABASE_PRINCIPAL_ID('atipicos_consulta') IS NULL CREATE ROLE atipicos_consulta;
IF DATABASE_PRINCIPAL_ID('atipicos_puesto') IS NULL CREATE ROLE atipicos_puesto;
IF DATABASE_PRINCIPAL_ID('atipicos_suplencia') IS NULL CREATE ROLE atipicos_suplencia;
ALTER ROLE atipicos_consulta ADD MEMBER atipicos_puesto;
GRANT SELECT ON SCHEMA::dbo TO atipicos_consulta;

-- Entries are added, never changed: that is done in the accounting product.
GRANT INSERT, UPDATE ON dbo.Contador_Asientos TO atipicos_puesto;
GRANT INSERT ON dbo.Asientos TO atipicos_puesto;
GRANT INSERT ON dbo.Apuntes TO atipicos_puesto;
GRANT INSERT ON dbo.Registro_Impuestos TO atipicos_puesto;
GRANT INSERT ON dbo.Previsiones TO atipicos_puesto;
GRANT INSERT ON dbo.Regularizaciones TO atipicos_puesto;
GRANT INSERT ON dbo.Asientos_Incompletos TO atipicos_puesto;

COMMIT TRANSACTION;

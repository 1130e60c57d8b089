-- Roles of those who work with the databases, with no more rights than their work needs. Run by the owner of the
-- databases, after `atipicos crear`; it can be run again:
--     sqlcmd -S SERVIDOR -i host/sql/permisos_sqlserver.sql
-- and then, for each person, whose login exists on the server:
--     USE Orvalin; CREATE USER begona FOR LOGIN begona; ALTER ROLE atipicos_puesto ADD MEMBER begona;
--     USE Bexmor;  CREATE USER begona FOR LOGIN begona; ALTER ROLE atipicos_puesto ADD MEMBER begona;
--
-- The program works in one session, in Orvalin, and reaches Bexmor from there in the same transaction. So both are
-- databases of one instance, and the same login has a user in each: a user with a password of its own (WITH PASSWORD,
-- of a contained database) or an application role gets into one of them only, and is told error 916 by the other.
-- Mirrored databases know no such transaction; those of an availability group do with DTC_SUPPORT = PER_DB.

USE Orvalin;
IF DATABASE_PRINCIPAL_ID('atipicos_consulta') IS NULL CREATE ROLE atipicos_consulta;
IF DATABASE_PRINCIPAL_ID('atipicos_puesto') IS NULL CREATE ROLE atipicos_puesto;
ALTER ROLE atipicos_consulta ADD MEMBER atipicos_puesto;

-- Who only looks: listar, mostrar, imprimir, verificar.
GRANT SELECT ON SCHEMA::dbo TO atipicos_consulta;

-- Who records charges.
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
IF DATABASE_PRINCIPAL_ID('atipicos_consulta') IS NULL CREATE ROLE atipicos_consulta;
IF DATABASE_PRINCIPAL_ID('atipicos_puesto') IS NULL CREATE ROLE atipicos_puesto;
ALTER ROLE atipicos_consulta ADD MEMBER atipicos_puesto;
GRANT SELECT ON SCHEMA::dbo TO atipicos_consulta;

-- Entries are added, never changed: that is done in the accounting product.
GRANT INSERT, UPDATE ON dbo.Contador_Asientos TO atipicos_puesto;
GRANT INSERT ON dbo.Asientos TO atipicos_puesto;
GRANT INSERT ON dbo.Apuntes TO atipicos_puesto;
GRANT INSERT ON dbo.Registro_Impuestos TO atipicos_puesto;
GRANT INSERT ON dbo.Previsiones TO atipicos_puesto;
GRANT INSERT ON dbo.Regularizaciones TO atipicos_puesto;

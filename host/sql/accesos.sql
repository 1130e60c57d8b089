-- Which user each login is: a person who has logged in records charges as that user, and as no other. The host's own.

CREATE TABLE Accesos (
    Login   NVARCHAR(128) NOT NULL PRIMARY KEY,
    Usuario INT NOT NULL
);

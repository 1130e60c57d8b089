' A host written in VBScript: its own company object, a database of the test through an object with ADO's surface, and
' the component by its names. Plain ASCII: the interpreter takes anything else for another code page.
Option Explicit

Dim bien, mal
bien = 0
mal = 0

Sub Comprueba(que, visto, esperado)
    If visto = esperado Then
        bien = bien + 1
    Else
        mal = mal + 1
        WScript.Echo "MAL " & que & ": " & visto & " en vez de " & esperado
    End If
End Sub

Class Empresa
    Public Property Get Codigo
        Codigo = 1
    End Property
    Public Property Get DecimalesImporte
        DecimalesImporte = 2
    End Property
    Public Function Parametro(clave)
        Parametro = Empty
        If clave = "UsuarioActual" Then Parametro = "1"
        If clave = "Proveedores_AtipcosImpuesto" Then Parametro = 1
    End Function
    Public Function PorcentajeImpuesto(tipo)
        PorcentajeImpuesto = CCur(7)
    End Function
End Class

Dim bases, conexion, cargo, lineas, linea, nombres, texto
Set bases = CreateObject("AtipicosPrueba.Bases")
Set conexion = bases.Abre("guion.db")
texto = "Queso a" & Chr(241) & "ejo, 5 " & Chr(128)

' A charge with its lines
Set cargo = CreateObject("QVORComprasAtip.clsAtipico")
Set cargo.EmpresaOrvalin = New Empresa
Set cargo.ConexionOrvalin = conexion
cargo.Cod_Ejercicio = 2026
cargo.Cod_Almacen = 4
cargo.Proveedor = 106
cargo.Fecha = #11/21/2026#
cargo.Hora = #9:05:03 AM#
cargo.Importe = CCur("123.45")
cargo.AplicarImpuesto = True
Set lineas = cargo.Lineas
Set linea = lineas.Add(1010, texto, 12.5, CCur("9.75"), "Con grietas", 7)
lineas.Add 1011, "Queso tierno", 1, 2
lineas.Add , "Entre los dos", , , , , 1

Comprueba "VarType Integer", VarType(cargo.Cod_Ejercicio), 2
Comprueba "VarType Long", VarType(cargo.Proveedor), 3
Comprueba "VarType Currency", VarType(cargo.Importe), 6
Comprueba "VarType Date", VarType(cargo.Fecha), 7
Comprueba "VarType String", VarType(cargo.Codigo), 8
Comprueba "VarType Boolean", VarType(cargo.AplicarImpuesto), 11
Comprueba "VarType Object", VarType(cargo.Lineas), 9
Comprueba "Fecha", cargo.Fecha = #11/21/2026#, True
Comprueba "Importe", cargo.Importe = CCur("123.45"), True
Comprueba "AplicarImpuesto", cargo.AplicarImpuesto, True
Comprueba "Count", lineas.Count, 3
Comprueba "Descripcion", lineas.Item(1).Descripcion = texto, True
Comprueba "intPosicion", lineas(2).Descripcion, "Entre los dos"
Comprueba "Lineas(3)", cargo.Lineas(3).Descripcion, "Queso tierno"
Comprueba "Id", linea.Id, 7
Comprueba "Is", lineas.Item(1) Is linea, True

Dim una, vistas
vistas = ""
For Each una In cargo.Lineas
    vistas = vistas & una.Cod_Articulo & ";"
Next
Comprueba "For Each", vistas, "1010;0;1011;"
Comprueba "Clone", lineas.Clone.Count, 3

' More lines than there are positions: the walk ends with an error, and nothing else ends
Dim muchas, andadas
Set muchas = CreateObject("QVORComprasAtip.clsAtipico_Lineas")
For andadas = 1 To 40000
    muchas.Add andadas
Next
Sub Recorre
    Dim otra
    For Each otra In muchas
        andadas = otra.Cod_Articulo
    Next
End Sub
On Error Resume Next
Recorre
Comprueba "For Each de 40.000", Err.Number, 6
Err.Clear
On Error GoTo 0
Comprueba "la ultima", andadas, 32767
Comprueba "Count de 40.000", muchas.Count, 40000

' Numbered and inserted
Comprueba "codigo sin tomar", cargo.Devuelve_Codigo(False, 2026), "AT260001"
cargo.Codigo = cargo.Devuelve_Codigo(True, 2026)
Comprueba "codigo", cargo.Codigo, "AT260001"
Comprueba "codigo siguiente", cargo.Devuelve_Codigo(False, 2026), "AT260002"
Comprueba "no existe", cargo.Existe(2026, 4, "AT260001"), False
Comprueba "Insertar", cargo.Insertar, False
Comprueba "existe", cargo.Existe(2026, 4, "AT260001"), True
Comprueba "lineas", bases.Primero("SELECT COUNT(*) FROM Proveedores_Cargos_Atipicos_Lineas"), "3"
Comprueba "impuesto", bases.Primero("SELECT Impuesto_Importe FROM Proveedores_Cargos_Atipicos"), "8,64"
Comprueba "texto", bases.Primero("SELECT Descripcion FROM Proveedores_Cargos_Atipicos_Lineas WHERE Num_Linea = 1") = texto, True

' Changed
linea.Descripcion = "Queso ahumado"
lineas.Remove 3
Comprueba "Modificar_Atipico", cargo.Modificar_Atipico, False
Comprueba "cambiada", bases.Primero("SELECT Descripcion FROM Proveedores_Cargos_Atipicos_Lineas WHERE Num_Linea = 1"), "Queso ahumado"
Comprueba "la sobrante queda", bases.Primero("SELECT COUNT(*) FROM Proveedores_Cargos_Atipicos_Lineas"), "3"

' Deleted
cargo.Eliminar_Atipico
Comprueba "eliminado", cargo.Existe(2026, 4, "AT260001"), False
Comprueba "sin lineas", bases.Primero("SELECT COUNT(*) FROM Proveedores_Cargos_Atipicos_Lineas"), "0"

' Errors
On Error Resume Next
cargo.Fecha = #12/31/1999#
Comprueba "sin error", Err.Number, 0
cargo.Devuelve_Codigo True, 2026
Comprueba "Err.Number", Err.Number, 1
Comprueba "Err.Source", Err.Source, "QVORComprasAtip:DevCodigo"
Comprueba "Err.Description", Left(Err.Description, 27), "Se necesita la fecha para d"
Err.Clear
linea = lineas.Item(9)
Comprueba "fuera de la coleccion", Err.Number, 5
Err.Clear
cargo.Cod_Ejercicio = 40000
Comprueba "desbordamiento", Err.Number, 6
Err.Clear
cargo.Fecha = "ni fecha ni nada"
Comprueba "tipos", Err.Number, 13
Err.Clear
cargo.NoHay = 1
Comprueba "miembro que no hay", Err.Number, 438
Err.Clear
bases.Abre "Z:\no\hay\tal.db"
Comprueba "error de la base", Err.Number <> 0, True
Err.Clear
lineas.Item(1).Descripcion = "L'antic"
cargo.Codigo = "AT260009"
cargo.Fecha = #11/21/2026#
Comprueba "Insertar con error", cargo.Insertar, True
On Error GoTo 0

WScript.Echo "guion: " & bien & " comprobaciones bien, " & mal & " mal"

#include "charges/clsAtipico.hpp"

#include "charges/Impuesto.hpp"
#include "charges/Instrucciones.hpp"
#include "context/claves.hpp"
#include "context/modComun.hpp"
#include "context/trap.hpp"
#include "runtime/Formato.hpp"

#include <utility>

namespace atipicos {

namespace {

    double usuario_actual(const qvoremp::Empresa& empresa, Donde donde = Donde::aqui())
    {
        const auto usuario = empresa.Parametro(claves::UsuarioActual, donde);
        return Val(CStr(usuario, donde), donde);
    }

    std::int32_t siguiente_numero(adodb::Recordset& rs, Date fecha)
    {
        if (rs.Eof())
            return CLng((fecha.anio() % 100) * 10000.0 + 1);
        // In floating point, so that the limit is an error and no wrap.
        return CLng(CDbl(rs.Fields("Numero").Value()) + 1);
    }

    /// The lines that the charge has been given, held as long as they are gone through: the host's connection
    /// could change them. Error 91 when it has been given none.
    std::shared_ptr<const clsAtipico_Lineas> lineas_de(const clsAtipico& cargo, Donde donde = Donde::aqui())
    {
        if (!cargo.Lineas)
            throw Error::de_ejecucion(numero_error::objeto_no_establecido, donde);
        return cargo.Lineas;
    }

}

void clsAtipico::set_ConexionOrvalin(std::shared_ptr<adodb::Connection> conexion) const noexcept
{
    modComun::set_ConexionOrvalin(std::move(conexion));
}

void clsAtipico::set_EmpresaOrvalin(std::shared_ptr<qvoremp::Empresa> empresa) const noexcept
{
    modComun::set_EmpresaOrvalin(std::move(empresa));
}

bool clsAtipico::Existe(
    std::int16_t intEjercicio, std::int16_t intAlmacen, const std::string& strCodigo) const
{
    const auto empresa = modComun::EmpresaOrvalin()->Codigo();
    auto rs = modComun::CreateRecordset();
    rs->Open(instrucciones::existe(empresa, intEjercicio, intAlmacen, strCodigo), adodb::CursorType::Static,
        adodb::LockType::ReadOnly);
    const bool existe = !rs->Eof();
    rs->Close();
    return existe;
}

bool clsAtipico::Insertar()
{
    const bool bien = trap(
        "clsAtipico:Insertar",
        [this] {
            const auto empresa = modComun::EmpresaOrvalin();
            instrucciones::Contexto contexto;
            if (AplicarImpuesto) {
                contexto.Impuesto = empresa->PorcentajeImpuesto(tipo_impuesto_atipicos());
                const int decimales = empresa->DecimalesImporte();
                contexto.Impuesto_Importe = importe_impuesto(Importe, contexto.Impuesto, decimales);
            }
            contexto.Cod_Empresa = empresa->Codigo();
            contexto.Usuario = usuario_actual(*empresa);

            const auto conexion = modComun::ConexionOrvalin();
            conexion->Execute(instrucciones::inserta_cabecera(*this, contexto));
            const auto lineas = lineas_de(*this);
            const std::int32_t ultima = lineas->UltimaPosicion();
            for (std::int32_t i = 1; i <= ultima; ++i) {
                const auto linea = lineas->Item(static_cast<std::int16_t>(i));
                conexion->Execute(instrucciones::inserta_linea(*this, contexto.Cod_Empresa, *linea, i));
            }
        },
        TextoError::SoloDescripcion);
    return !bien;
}

bool clsAtipico::Modificar_Atipico()
{
    bool error = false;
    const bool bien = trap("clsAtipico:Modificar", [this, &error] {
        const auto empresa = modComun::EmpresaOrvalin();
        instrucciones::Contexto contexto;
        const int decimales = empresa->DecimalesImporte();
        contexto.Impuesto = Redondear(Impuesto, decimales);
        contexto.Impuesto_Importe = importe_impuesto(Importe, contexto.Impuesto, decimales);
        contexto.Cod_Empresa = empresa->Codigo();
        contexto.Usuario = usuario_actual(*empresa);

        const auto conexion = modComun::ConexionOrvalin();
        std::int32_t afectadas = 0;
        conexion->Execute(instrucciones::modifica_cabecera(*this, contexto), &afectadas);
        if (afectadas == 0) {
            error = Insertar();
            return;
        }
        const auto lineas = lineas_de(*this);
        const std::int32_t ultima = lineas->UltimaPosicion();
        for (std::int32_t i = 1; i <= ultima; ++i) {
            const auto linea = lineas->Item(static_cast<std::int16_t>(i));
            conexion->Execute(
                instrucciones::modifica_linea(*this, contexto.Cod_Empresa, *linea, i), &afectadas);
            if (afectadas == 0)
                conexion->Execute(instrucciones::inserta_linea(*this, contexto.Cod_Empresa, *linea, i));
        }
    });
    return !bien || error;
}

void clsAtipico::Eliminar_Atipico() { static_cast<void>(EliminarConResultado()); }

bool clsAtipico::EliminarConResultado()
{
    const bool bien = trap("clsAtipico:Eliminar_Atipico", [this] {
        const auto empresa = modComun::EmpresaOrvalin()->Codigo();
        const auto conexion = modComun::ConexionOrvalin();
        conexion->Execute(instrucciones::elimina_lineas(*this, empresa));
        conexion->Execute(instrucciones::elimina_cabecera(*this, empresa));
    });
    return !bien;
}

std::string clsAtipico::Devuelve_Codigo(bool bolMod, std::int16_t intEjercicio)
{
    if (Fecha < Date::de_dia(2000, 1, 1))
        throw Error(
            1, "QVORComprasAtip:DevCodigo", "Se necesita la fecha para devolver el código de cargo/abono");

    const auto empresa = modComun::EmpresaOrvalin()->Codigo();
    auto rs = modComun::CreateRecordset();
    rs->Open(instrucciones::contador(empresa, intEjercicio, Cod_Almacen), adodb::CursorType::Keyset,
        adodb::LockType::Pessimistic);

    const std::int32_t numero = siguiente_numero(*rs, Fecha);
    if (bolMod) {
        if (rs->Eof()) {
            rs->AddNew();
            rs->Fields("Cod_Empresa").Value(std::int32_t{ empresa });
            rs->Fields("Cod_Ejercicio").Value(std::int32_t{ intEjercicio });
            rs->Fields("Cod_Almacen").Value(std::int32_t{ Cod_Almacen });
        }
        rs->Fields("Numero").Value(numero);
        rs->Update();
    }
    rs->Close();
    return "AT" + std::to_string(numero);
}

} // namespace atipicos

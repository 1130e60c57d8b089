#include "tests/support/BibliotecaDePrueba.hpp"

#include <utility>

namespace atipicos::pruebas {

namespace {

    class EmpresaContable final : public qvbxemp::Empresa {
    public:
        EmpresaContable(const BibliotecaDePrueba& biblioteca, std::shared_ptr<Diario> diario)
            : m_biblioteca(biblioteca)
            , m_diario(std::move(diario))
        {
        }
        bool Cargar(Donde) override { return Codigo == 1 || Codigo == 2; }
        Variant Parametro(std::string_view clave, Donde) const override
        {
            return clave == "ODBCBaseDatos" ? Variant("Bexmor") : Variant();
        }
        std::string CuentaBancoPago(Donde) const override { return Codigo == 1 ? "57200001" : "572000001"; }
        int LongitudCuenta(Donde) const override { return Codigo == 1 ? 8 : 9; }
        const qvbxemp::Biblioteca& biblioteca() const noexcept override { return m_biblioteca; }

    private:
        const BibliotecaDePrueba& m_biblioteca;
        std::shared_ptr<Diario> m_diario;
    };

    class AsientoDePrueba final : public qvbxemp::Asiento {
    public:
        AsientoDePrueba(const qvbxemp::Empresa& empresa, std::shared_ptr<Diario> diario)
            : m_empresa(empresa)
            , m_diario(std::move(diario))
        {
        }
        void Crear(Donde) override
        {
            Numero = 7001;
            m_diario->escrito.push_back("asiento " + std::to_string(Numero) + " empresa "
                + std::to_string(m_empresa.Codigo) + " ejercicio " + std::to_string(m_empresa.Ejercicio)
                + " fecha " + Fecha.texto() + " usuario " + m_empresa.UsuarioActual);
        }
        std::int32_t SiguienteLinea(Donde) override { return ++m_linea; }

    private:
        const qvbxemp::Empresa& m_empresa;
        std::shared_ptr<Diario> m_diario;
        std::int32_t m_linea = 0;
    };

    class ApunteDePrueba final : public qvbxemp::Apunte {
    public:
        explicit ApunteDePrueba(std::shared_ptr<Diario> diario)
            : m_diario(std::move(diario))
        {
        }
        bool Guardar(Donde) override
        {
            if (m_diario->cuentas_rechazadas.contains(Cuenta)) {
                m_error = Error(55, "QVBXEMP:Apunte", "La cuenta " + Cuenta + " no existe");
                return false;
            }
            std::string linea = std::to_string(Asiento) + "/" + std::to_string(Linea) + " " + Cuenta
                + (Haber == Currency() ? " debe " + Debe.texto() : " haber " + Haber.texto()) + " dto "
                + Departamento + " doc " + Documento + " cto [" + ConceptoAutomatico + "] " + Concepto;
            if (TipoImpuesto != 0)
                linea += " | impuesto " + std::to_string(TipoImpuesto) + " " + PorcentajeImpuesto.texto()
                    + " base " + BaseImpuesto.texto();
            m_diario->escrito.push_back(linea);
            return true;
        }
        const Error& error() const noexcept override { return m_error; }

    private:
        std::shared_ptr<Diario> m_diario;
        Error m_error{ 0, "", "", Donde{} };
    };

    class RegistroDePrueba final : public qvbxemp::RegistroImpuesto {
    public:
        explicit RegistroDePrueba(std::shared_ptr<Diario> diario)
            : m_diario(std::move(diario))
        {
        }
        void Guardar(Donde donde) override
        {
            if (m_diario->falla_registro)
                throw Error(77, "QVBXEMP:RegistroImpuesto", "registro no admitido", donde);
            m_diario->escrito.push_back("registro clase " + std::to_string(Clase) + " indicador "
                + std::to_string(Indicador) + " doc " + Documento + " base " + Base.texto() + " tipo "
                + std::to_string(TipoImpuesto) + " cuota " + Cuota.texto() + " total " + TotalImpuesto.texto()
                + " en " + std::to_string(Asiento) + "/" + std::to_string(Linea));
        }

    private:
        std::shared_ptr<Diario> m_diario;
    };

    class PrevisionDePrueba final : public qvbxemp::Prevision {
    public:
        explicit PrevisionDePrueba(std::shared_ptr<Diario> diario)
            : m_diario(std::move(diario))
        {
        }
        void Guardar(Donde donde) override
        {
            if (m_diario->falla_prevision)
                throw Error(78, "QVBXEMP:Prevision", "previsión no admitida", donde);
            m_diario->escrito.push_back("prevision " + Importe.texto() + " tipo " + std::to_string(TipoDoc)
                + " el " + Vencimiento.texto() + " banco " + Banco + " cuenta " + Cuenta + " dto "
                + Departamento + " asiento " + std::to_string(Asiento));
        }

    private:
        std::shared_ptr<Diario> m_diario;
    };

    class ServicioDePrueba final : public qvbxemp::ServicioCuentas {
    public:
        std::string FormarCuenta(
            const std::string& raiz, std::int32_t codigo, int longitud, Donde) const override
        {
            const auto cifras = std::to_string(codigo);
            return raiz + std::string(static_cast<std::size_t>(longitud) - raiz.size() - cifras.size(), '0')
                + cifras;
        }
        bool ExisteCuenta(const std::string& cuenta, Donde) const override
        {
            return cuenta.starts_with("572");
        }
        qvbxemp::TipoImpuesto LeerTipoImpuesto(std::int16_t tipo, Donde donde) const override
        {
            if (tipo != 1 && tipo != 2)
                throw Error(79, "QVBXEMP:ServicioCuentas",
                    "No existe el tipo de impuesto " + std::to_string(tipo) + ".", donde);
            return tipo == 1 ? qvbxemp::TipoImpuesto{ Currency::de_entero(7), "47700007" }
                             : qvbxemp::TipoImpuesto{ Currency::de_entero(3), "47700003" };
        }
    };

}

Variant EmpresaDePrueba::Parametro(std::string_view clave, Donde) const
{
    preguntas.emplace_back(clave);
    const auto lugar = parametros.find(clave);
    return lugar == parametros.end() ? Variant() : lugar->second;
}

Currency EmpresaDePrueba::PorcentajeImpuesto(std::int16_t tipo, Donde donde) const
{
    const auto lugar = porcentajes.find(tipo);
    if (lugar == porcentajes.end())
        throw Error(1001, "QVOREMP", "No existe el tipo de impuesto " + std::to_string(tipo) + ".", donde);
    return lugar->second;
}

std::unique_ptr<qvbxemp::Empresa> BibliotecaDePrueba::NuevaEmpresa(Donde) const
{
    return std::make_unique<EmpresaContable>(*this, diario);
}

std::unique_ptr<qvbxemp::Asiento> BibliotecaDePrueba::NuevoAsiento(
    const qvbxemp::Empresa& empresa, Donde) const
{
    diario->empresa = { empresa.Conexion.get(), empresa.Ejercicio, empresa.FechaTrabajo };
    return std::make_unique<AsientoDePrueba>(empresa, diario);
}

std::unique_ptr<qvbxemp::Apunte> BibliotecaDePrueba::NuevoApunte(const qvbxemp::Empresa&, Donde) const
{
    return std::make_unique<ApunteDePrueba>(diario);
}

std::unique_ptr<qvbxemp::RegistroImpuesto> BibliotecaDePrueba::NuevoRegistroImpuesto(
    const qvbxemp::Empresa&, Donde) const
{
    return std::make_unique<RegistroDePrueba>(diario);
}

std::unique_ptr<qvbxemp::Prevision> BibliotecaDePrueba::NuevaPrevision(const qvbxemp::Empresa&, Donde) const
{
    return std::make_unique<PrevisionDePrueba>(diario);
}

std::unique_ptr<qvbxemp::ServicioCuentas> BibliotecaDePrueba::NuevoServicioCuentas(
    const qvbxemp::Empresa&, Donde) const
{
    return std::make_unique<ServicioDePrueba>();
}

} // namespace atipicos::pruebas

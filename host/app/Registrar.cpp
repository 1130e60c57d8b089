#include "browser/DetalleAtipico.hpp"
#include "browser/ListaAtipicos.hpp"
#include "charges/Impuesto.hpp"
#include "context/modComun.hpp"
#include "editor/GuardarAtipico.hpp"
#include "host/app/ConexionConAnotacion.hpp"
#include "host/app/FicheroReclamaciones.hpp"
#include "host/app/Ordenes.hpp"
#include "host/app/PrevisionesPropuestas.hpp"
#include "host/app/Progreso.hpp"
#include "host/app/Sesion.hpp"
#include "host/app/Tabla.hpp"
#include "host/sql/Literal.hpp"
#include "platform/adodb/campos.hpp"
#include "runtime/Formato.hpp"

#include <openssl/evp.h>

#include <array>
#include <iostream>
#include <map>
#include <memory>
#include <tuple>
#include <vector>

namespace atipicos::app {

namespace {

    /// SHA-256 of the file, in hexadecimal: by it a file is known again, whatever its name.
    std::string huella_de(const std::string& contenido)
    {
        std::array<unsigned char, EVP_MAX_MD_SIZE> resumen{};
        unsigned tamano = 0;
        if (EVP_Digest(contenido.data(), contenido.size(), resumen.data(), &tamano, EVP_sha256(), nullptr)
            != 1)
            throw Error(no_hecho, "atipicos", "No se pudo calcular la huella del fichero.");
        static constexpr std::string_view cifras = "0123456789abcdef";
        std::string texto;
        for (unsigned i = 0; i < tamano; ++i) {
            texto += cifras[resumen[i] >> 4];
            texto += cifras[resumen[i] & 0xf];
        }
        return texto;
    }

    /// A reference of this file that has become a charge.
    struct Registrada {
        std::int16_t vez = 0; ///< how often it has been recorded
        ClaveAtipico clave; ///< the last time
    };

    struct EnTabla {
        std::string referencia;
        ClaveAtipico clave;
        const char* estado = "";
    };

    class Registro {
    public:
        Registro(Sesion& sesion, const OpcionesRegistrar& opciones)
            : m_sesion(sesion)
            , m_fichero(opciones.fichero.filename().string())
            , m_otra_vez(opciones.otra_vez)
            , m_conexion(std::make_shared<ConexionConAnotacion>(sesion.bases.orvalin))
        {
            const std::string contenido = lee_fichero(opciones.fichero);
            try {
                m_reclamaciones = lee_reclamaciones(contenido);
            } catch (const Error& error) {
                throw Error(no_hecho, "atipicos", m_fichero + ", " + error.descripcion());
            }
            m_huella = huella_de(contenido);
            modComun::set_ConexionOrvalin(m_conexion);
        }

        int registra()
        {
            for (const auto& nota : m_reclamaciones.notas)
                di("aviso", nota);
            for (const auto& error : m_reclamaciones.errores)
                di("error", error);
            lee_registradas();
            {
                Progreso progreso("Registrando", m_reclamaciones.todas.size());
                for (auto& reclamacion : m_reclamaciones.todas) {
                    registra_una(reclamacion);
                    progreso.avanza();
                }
            }
            return resume();
        }

    private:
        void di(const char* que, const Reparo& reparo) const
        {
            std::cerr << '[' << que << "] " << m_fichero << ", fila " << reparo.fila;
            if (!reparo.columna.empty())
                std::cerr << ", columna «" << reparo.columna << "»";
            std::cerr << ": " << reparo.motivo << std::endl;
        }

        void repara(Reclamacion& reclamacion, int fila, const char* columna, const std::string& motivo) const
        {
            di("error", { fila, columna, motivo });
            reclamacion.valida = false;
        }

        void lee_registradas()
        {
            auto rs = m_sesion.bases.orvalin->CreateRecordset();
            rs->Open("SELECT * FROM Importaciones WHERE Cod_Empresa ="
                    + std::to_string(m_sesion.empresa->Codigo(Donde::aqui()))
                    + " AND Huella =" + sql::literal(m_huella) + " ORDER BY Vez",
                adodb::CursorType::Static, adodb::LockType::ReadOnly);
            for (; !rs->Eof(); rs->MoveNext())
                m_registradas[adodb::texto(*rs, "Referencia")] = { adodb::entero(*rs, "Vez"),
                    { adodb::entero(*rs, "Cod_Ejercicio"), adodb::entero(*rs, "Cod_Almacen"),
                        adodb::texto(*rs, "Codigo") } };
        }

        void registra_una(Reclamacion& reclamacion)
        {
            const auto ya = m_registradas.find(reclamacion.referencia);
            if (!reclamacion.valida) { // even under the name of one that was recorded
                ++m_rechazadas;
                return;
            }
            if (ya != m_registradas.end() && !m_otra_vez) {
                ++m_ya_registradas;
                m_tabla.push_back({ reclamacion.referencia, ya->second.clave, "ya registrada" });
                return;
            }
            clsAtipico cargo;
            CargoTecleado tecleado;
            prepara(reclamacion, cargo, tecleado);
            if (!reclamacion.valida) {
                ++m_rechazadas;
                return;
            }
            const auto vez = static_cast<std::int16_t>(ya == m_registradas.end() ? 1 : ya->second.vez + 1);
            guarda(reclamacion, cargo, tecleado, vez);
        }

        /// Fills the charge from the file and the catalogues, or says what there is not.
        void prepara(Reclamacion& reclamacion, clsAtipico& cargo, CargoTecleado& tecleado) const
        {
            const auto& catalogos = m_sesion.catalogos;
            if (!catalogos.almacen(reclamacion.almacen))
                repara(reclamacion, reclamacion.fila, "almacen",
                    "no existe el almacén " + std::to_string(reclamacion.almacen) + ".");
            const auto proveedor = catalogos.proveedor(reclamacion.proveedor);
            if (!proveedor)
                repara(reclamacion, reclamacion.fila, "proveedor",
                    "no existe el proveedor " + std::to_string(reclamacion.proveedor) + ".");
            tecleado = { "", reclamacion.almacen, reclamacion.proveedor, proveedor.value_or(""),
                reclamacion.fecha, reclamacion.observaciones, reclamacion.franquiciado, {}, {} };
            for (const auto& linea : reclamacion.lineas)
                agrega_linea(reclamacion, linea, cargo, tecleado);
        }

        void agrega_linea(Reclamacion& reclamacion, const LineaReclamada& linea, clsAtipico& cargo,
            CargoTecleado& tecleado) const
        {
            orvalin::Articulo articulo;
            if (linea.articulo != 0) {
                const auto hallado = m_sesion.catalogos.articulo(linea.articulo);
                if (!hallado)
                    repara(reclamacion, linea.fila, "articulo",
                        "no existe el artículo " + std::to_string(linea.articulo) + ".");
                articulo = hallado.value_or(orvalin::Articulo{});
            }
            cargo.Lineas->Add(linea.articulo, linea.descripcion.empty() ? articulo.Nombre : linea.descripcion,
                linea.unidades, linea.costo, linea.observaciones);
            try {
                const Currency importe = importe_linea(linea.unidades, linea.costo);
                tecleado.Cargos.push_back({ importe, articulo.CtaIngresosAtipicos });
                tecleado.Total += importe;
            } catch (const Error&) {
                repara(reclamacion, linea.fila, "costo", "unidades por costo no cabe en un importe.");
            }
        }

        void guarda(const Reclamacion& reclamacion, clsAtipico& cargo, const CargoTecleado& tecleado,
            std::int16_t vez)
        {
            m_conexion->anotacion = [&] {
                exige_nueva(reclamacion.referencia, vez);
                return anotacion(reclamacion.referencia, cargo, vez);
            };
            const auto resultado = GuardarAtipico(cargo, tecleado,
                [](const Contabilizacion& datos) { return std::optional(previsiones_propuestas(datos)); });
            m_conexion->anotacion = nullptr;
            if (resultado.estado != ResultadoGuardado::Estado::Guardado || resultado.InsertarFallido) {
                cuenta_fallida(reclamacion, cargo, vez);
                return;
            }
            ++m_nuevas;
            m_tabla.push_back({ reclamacion.referencia,
                { cargo.Cod_Ejercicio, cargo.Cod_Almacen, cargo.Codigo }, "registrada" });
        }

        /// After a save that showed an error: nothing of the charge is there, or the part that was committed,
        /// or the whole of it under the code that another process gave it meanwhile.
        void cuenta_fallida(const Reclamacion& reclamacion, const clsAtipico& cargo, std::int16_t vez)
        {
            lee_registradas();
            const auto lugar = m_registradas.find(reclamacion.referencia);
            const bool consta = lugar != m_registradas.end() && lugar->second.vez == vez;
            if (consta && lugar->second.clave.Codigo != cargo.Codigo) {
                ++m_ya_registradas;
                m_tabla.push_back({ reclamacion.referencia, lugar->second.clave, "ya registrada" });
                return;
            }
            ++m_rechazadas;
            di("error",
                { reclamacion.fila, "",
                    "«" + reclamacion.referencia
                        + (consta ? "» se ha guardado a medias como " + lugar->second.clave.Codigo
                                    + "; vea qué le falta con: atipicos verificar"
                                  : "» no se ha registrado.") });
        }

        /// Gives the save up when another process has recorded the reference since it was looked up.
        void exige_nueva(const std::string& referencia, std::int16_t vez) const
        {
            auto rs = m_sesion.bases.orvalin->CreateRecordset();
            rs->Open("SELECT Codigo FROM Importaciones WHERE Cod_Empresa ="
                    + std::to_string(m_sesion.empresa->Codigo(Donde::aqui()))
                    + " AND Huella =" + sql::literal(m_huella)
                    + " AND Referencia =" + sql::literal(referencia) + " AND Vez =" + std::to_string(vez),
                adodb::CursorType::Static, adodb::LockType::ReadOnly);
            if (!rs->Eof())
                throw Error(no_hecho, "atipicos",
                    "Otro proceso acaba de registrar «" + referencia + "» de este fichero como "
                        + adodb::texto(*rs, "Codigo") + ".");
        }

        /// Remembers the charge, provided that it is there: `Insertar` may have shown an error.
        [[nodiscard]] std::string anotacion(
            const std::string& referencia, const clsAtipico& cargo, std::int16_t vez) const
        {
            return "INSERT INTO Importaciones (Huella, Referencia, Vez, Cod_Empresa, Cod_Ejercicio, "
                   "Cod_Almacen, Codigo)"
                   " SELECT "
                + sql::literal(m_huella) + ", " + sql::literal(referencia) + ", " + std::to_string(vez)
                + ", Cod_Empresa, Cod_Ejercicio, Cod_Almacen, Codigo FROM Proveedores_Cargos_Atipicos WHERE "
                  "Cod_Empresa ="
                + std::to_string(m_sesion.empresa->Codigo(Donde::aqui()))
                + " AND Cod_Ejercicio =" + std::to_string(cargo.Cod_Ejercicio) + " AND Cod_Almacen ="
                + std::to_string(cargo.Cod_Almacen) + " AND Codigo =" + sql::literal(cargo.Codigo);
        }

        int resume() const
        {
            escribe_tabla();
            std::cout << m_nuevas << " registradas, " << m_ya_registradas << " ya lo estaban, "
                      << m_rechazadas << " rechazadas";
            if (m_sesion.avisos->errores() > 0)
                std::cout << ", " << m_sesion.avisos->errores() << " mensajes de error";
            std::cout << ".\n";
            return m_rechazadas == 0 && m_sesion.avisos->errores() == 0 ? hecho : no_hecho;
        }

        /// The charges of this file as the database holds them now, new and old.
        void escribe_tabla() const
        {
            if (m_tabla.empty())
                return;
            std::map<std::tuple<std::int32_t, std::int32_t, std::string>, CargoListado> cargos;
            Cargar_Atipicos({ "01/01/1900", "31/12/9999" }, [&](const CargoListado& cargo) {
                cargos[{ cargo.Fecha.anio(), cargo.Cod_Almacen, cargo.Codigo }] = cargo;
            });
            const auto derecha = Alineacion::derecha;
            Tabla tabla(
                { { "Referencia" }, { "Código" }, { "Almacén", derecha }, { "Fecha" }, { "Proveedor" },
                    { "Total", derecha }, { "Impuesto", derecha }, { "Asiento", derecha }, { "Estado" } });
            for (const auto& [referencia, clave, estado] : m_tabla) {
                const auto lugar = cargos.find({ clave.Ejercicio, clave.Almacen, clave.Codigo });
                if (lugar == cargos.end()) {
                    tabla.agrega({ referencia, clave.Codigo, std::to_string(clave.Almacen), "", "", "", "",
                        "", "eliminada después" });
                    continue;
                }
                const auto& cargo = lugar->second;
                tabla.agrega({ referencia, cargo.Codigo, std::to_string(cargo.Cod_Almacen),
                    cargo.Fecha.texto(), cargo.Nombre_Proveedor, texto_pantalla(cargo.Importe, 2),
                    texto_pantalla(cargo.Impuesto_Importe, 2),
                    cargo.Asiento > 0 ? std::to_string(cargo.Asiento) : "", estado });
            }
            tabla.escribe(std::cout);
        }

        Sesion& m_sesion;
        std::string m_fichero;
        bool m_otra_vez;
        std::shared_ptr<ConexionConAnotacion> m_conexion;
        Reclamaciones m_reclamaciones;
        std::string m_huella;
        std::map<std::string, Registrada> m_registradas;
        std::vector<EnTabla> m_tabla; ///< in the order of the file
        int m_nuevas = 0;
        int m_ya_registradas = 0;
        int m_rechazadas = 0;
    };

}

int registrar(const OpcionesComunes& comunes, const OpcionesRegistrar& opciones)
{
    Sesion sesion(comunes);
    return Registro(sesion, opciones).registra();
}

} // namespace atipicos::app

#pragma once

#include "editor/EdicionAtipico.hpp"
#include "editor/GuardarAtipico.hpp"
#include "host/bases/Bases.hpp"
#include "host/bexmor/Biblioteca.hpp"
#include "host/orvalin/Empresa.hpp"
#include "posting/Prevision.hpp"
#include "tests/simulacion/Guion.hpp"
#include "tests/simulacion/Modelo.hpp"
#include "tests/support/CarpetaTemporal.hpp"
#include "tests/support/ConexionEspia.hpp"
#include "tests/support/Contexto.hpp"

#include <array>
#include <memory>
#include <optional>
#include <string>

namespace atipicos::pruebas {

/// The clerks at the program's own operations, each on connections of his own to one sample company, and a
/// model beside them. Each step is done by both; what differs is the reason of a failure.
class Oficina {
public:
    /// Works on `modelo`, which must outlive it.
    explicit Oficina(Modelo& modelo);
    Oficina(const Oficina&) = delete;
    Oficina& operator=(const Oficina&) = delete;
    ~Oficina();

    [[nodiscard]] std::optional<std::string> da(const Paso& paso); ///< what differs, if anything does
    [[nodiscard]] std::optional<std::string> compara() const; ///< every row
    [[nodiscard]] std::optional<std::string> verifica() const; ///< what `verificar` says

    struct Cuenta {
        std::size_t guardados = 0;
        std::size_t eliminados = 0;
        std::size_t perdidas = 0; ///< connections
    };
    [[nodiscard]] const Cuenta& cuenta() const noexcept { return m_cuenta; }

private:
    /// A clerk: his connections, and the charge that he is keying in, as the program and as the model have
    /// it.
    struct Oficinista {
        std::int32_t usuario = 0;
        bases::Bases bases;
        std::shared_ptr<Parte> parte = std::make_shared<Parte>();
        std::shared_ptr<adodb::Connection> gestion;
        std::shared_ptr<adodb::Connection> contabilidad;
        std::shared_ptr<orvalin::Empresa> empresa;
        std::shared_ptr<bexmor::Biblioteca> biblioteca;
        std::shared_ptr<qvbxemp::Empresa> contable;
        EdicionAtipico edicion;
        CargoModelo borrador;
        std::size_t pierde_en = 0; ///< the operation at which his next save or deletion loses its connection
    };

    using Diferencia = std::optional<std::string>;

    /// A save, as it was tried and as it ended.
    struct Intento {
        ResultadoGuardado resultado;
        std::vector<PrevisionModelo> previsiones;
        Suerte suerte;
        bool perdida = false; ///< its connection broke
        Diferencia mal; ///< found wrong on the way
    };

    void conecta(Oficinista& quien);
    void sienta(const Oficinista& quien) const; ///< the component works for him from now on
    void empieza_cargo(Oficinista& quien, const Paso& paso) const;
    [[nodiscard]] const CargoModelo* elige(std::uint32_t cual) const; ///< one of the stored charges

    Diferencia linea(Oficinista& quien, const Paso& paso);
    Diferencia cambia(Oficinista& quien, const Paso& paso);
    Diferencia quita(Oficinista& quien, const Paso& paso);
    Diferencia comenta(Oficinista& quien, const Paso& paso);
    Diferencia cancela(Oficinista& quien, const Paso& paso);
    Diferencia guarda(Oficinista& quien, const Paso& paso);
    Diferencia renuncia(Oficinista& quien, const Paso& paso);
    Diferencia abre(Oficinista& quien, const Paso& paso);
    Diferencia elimina(Oficinista& quien, const Paso& paso);
    Diferencia lista(Oficinista& quien, const Paso& paso);
    Diferencia detalle(Oficinista& quien, const Paso& paso);
    Diferencia imprime(Oficinista& quien, const Paso& paso);
    Diferencia pierde(Oficinista& quien, const Paso& paso);

    Intento intenta_guardar(Oficinista& quien, const Paso& paso);
    static std::optional<std::vector<Prevision>> acuerda(
        const Contabilizacion& datos, const Paso& paso, Crudo a_pagar, Intento& intento);
    [[nodiscard]] Diferencia juzga_guardado(const Oficinista& quien, const Intento& intento) const;

    [[nodiscard]] static Diferencia igual_que_su_borrador(const Oficinista& quien);
    void prepara_perdida(Oficinista& quien) const;
    [[nodiscard]] Suerte suerte_de(const Oficinista& quien) const; ///< of what he has just done
    void vuelve_a_conectar(Oficinista& quien); ///< if he has lost his connection

    Modelo& m_modelo;
    Cuenta m_cuenta;
    CarpetaTemporal m_carpeta;
    std::shared_ptr<MsgBoxDePrueba> m_avisos = std::make_shared<MsgBoxDePrueba>();
    std::shared_ptr<RelojDePrueba> m_reloj = std::make_shared<RelojDePrueba>();
    std::array<Oficinista, oficinistas> m_oficinistas;
};

} // namespace atipicos::pruebas

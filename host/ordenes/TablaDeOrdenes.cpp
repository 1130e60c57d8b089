#include "host/ordenes/TablaDeOrdenes.hpp"

#include "host/comprobacion/ClaveAsiento.hpp"
#include "host/ordenes/Argumentos.hpp"
#include "host/ordenes/DeclaraFichas.hpp"
#include "host/ordenes/Ordenes.hpp"

#include <algorithm>
#include <array>
#include <memory>
#include <string>
#include <vector>

namespace atipicos::app {

namespace {

    using Corre = std::function<int()>;

    Corre declara_crear(CLI::App& orden, const Entorno& entorno)
    {
        agrega_lugar(orden, entorno.comunes);
        const auto vacia = std::make_shared<bool>(false);
        orden.add_flag("--vacia", *vacia, "Sólo las tablas, sin la empresa de muestra");
        return [&comunes = entorno.comunes, vacia] { return crear(comunes, *vacia); };
    }

    Corre declara_copiar(CLI::App& orden, const Entorno& entorno)
    {
        agrega_lugar(orden, entorno.comunes);
        const auto destino = std::make_shared<std::filesystem::path>();
        orden.add_option("DESTINO", *destino, "Fichero o carpeta en los que se hace la copia")->required();
        return [&comunes = entorno.comunes, destino] { return copiar(comunes, *destino); };
    }

    Corre declara_actualizar(CLI::App& orden, const Entorno& entorno)
    {
        agrega_lugar(orden, entorno.comunes);
        return [&comunes = entorno.comunes] { return actualizar(comunes); };
    }

    Corre declara_accesos(CLI::App& orden, const Entorno& entorno)
    {
        agrega_lugar(orden, entorno.comunes);
        const auto opciones = std::make_shared<OpcionesAccesos>();
        orden.add_option("LOGIN", opciones->login, "Con qué nombre entra en el servidor, o en la máquina");
        const auto* usuario
            = agrega_numero(orden, "USUARIO", opciones->usuario, "Qué usuario es desde ahora");
        orden.add_flag("--quitar", opciones->quitar, "Desde ahora no es ninguno");
        return [&comunes = entorno.comunes, opciones, usuario] {
            if (opciones->quitar && (opciones->login.empty() || !usuario->empty()))
                throw MalUsada("--quitar: va con un login, y sin usuario.");
            return accesos(comunes, *opciones);
        };
    }

    Corre declara_verificar(CLI::App& orden, const Entorno& entorno)
    {
        agrega_comunes(orden, entorno.comunes);
        const auto proponer = std::make_shared<bool>(false);
        orden.add_flag("--proponer", *proponer,
            "También dice los pasos que arreglarían lo que difiere, sin dar ninguno");
        return [&comunes = entorno.comunes, proponer] { return verificar(comunes, *proponer); };
    }

    Corre declara_registrar(CLI::App& orden, const Entorno& entorno)
    {
        agrega_comunes(orden, entorno.comunes);
        const auto opciones = std::make_shared<OpcionesRegistrar>();
        orden.add_option("FICHERO", opciones->fichero, "Fichero CSV de reclamaciones")->required();
        orden
            .add_option("--otra-vez", opciones->otra_vez,
                "También las reclamaciones de estas referencias (R1,R2), aunque ya se registraran")
            ->type_name("REFERENCIAS")
            ->expected(1)
            ->multi_option_policy(CLI::MultiOptionPolicy::TakeAll)
            ->allow_extra_args(false);
        orden.add_flag("--comprobar", opciones->comprobar, "Sólo dice lo que está mal, sin escribir nada");
        orden.add_flag("--sin-asiento", opciones->sin_asiento,
            "Guarda sin asiento los cargos que no se pueden contabilizar");
        return [&comunes = entorno.comunes, opciones] { return registrar(comunes, *opciones); };
    }

    Corre declara_listar(CLI::App& orden, const Entorno& entorno)
    {
        agrega_comunes(orden, entorno.comunes);
        const auto opciones = std::make_shared<OpcionesListar>();
        agrega_dia(orden, "--desde", opciones->desde, "Primer día")->required();
        agrega_dia(orden, "--hasta", opciones->hasta, "Último día")->required();
        agrega_numero(orden, "--almacen", opciones->almacen, "Sólo los de este almacén");
        agrega_numero(orden, "--proveedor", opciones->proveedor, "Sólo los de este proveedor");
        agrega_formato(orden, opciones->formato, { "tabla", "csv", "json", "xlsx" },
            "tabla, csv, json o xlsx (por defecto, tabla)");
        orden.add_option("--salida", opciones->salida, "Fichero en el que se escribe");
        return [&comunes = entorno.comunes, opciones] {
            if (opciones->formato == "xlsx" && opciones->salida.empty())
                throw MalUsada("--formato: xlsx necesita --salida FICHERO.");
            return listar(comunes, *opciones);
        };
    }

    bool es_imagen(const std::string& formato)
    {
        return formato == "png" || formato == "svg" || formato == "pdf";
    }

    /// What the name of a file says of its format, in small letters; a table without one.
    std::string formato_de(const std::filesystem::path& fichero)
    {
        auto letras = fichero.extension().string();
        if (letras.empty() || letras == ".txt")
            return "tabla";
        letras.erase(0, 1);
        std::ranges::transform(letras, letras.begin(),
            [](char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c; });
        if (letras == "csv" || letras == "json" || letras == "xlsx" || es_imagen(letras))
            return letras;
        throw MalUsada("--salida: no se conoce el formato «" + letras + "»; dígalo con --formato.");
    }

    void comprueba_resumen(OpcionesResumen& opciones, bool con_formato)
    {
        if (!con_formato)
            opciones.formato = formato_de(opciones.salida);
        if (opciones.salida.empty() && (opciones.formato == "xlsx" || es_imagen(opciones.formato)))
            throw MalUsada("--formato: " + opciones.formato + " necesita --salida FICHERO.");
        if (opciones.desde && opciones.hasta && *opciones.desde > *opciones.hasta)
            throw MalUsada("--desde: es un día posterior al de --hasta.");
    }

    Corre declara_resumen(CLI::App& orden, const Entorno& entorno)
    {
        agrega_comunes(orden, entorno.comunes);
        const auto opciones = std::make_shared<OpcionesResumen>();
        const auto desde = std::make_shared<Date>();
        const auto hasta = std::make_shared<Date>();
        orden
            .add_option("--por", opciones->por, "proveedor, mes, almacen o articulo (por defecto, proveedor)")
            ->check(uno_de({ "proveedor", "mes", "almacen", "articulo" }, "la manera de resumir"));
        const auto* con_desde
            = agrega_dia(orden, "--desde", *desde, "Primer día (por defecto, el 1 de enero de ese año)");
        const auto* con_hasta = agrega_dia(orden, "--hasta", *hasta, "Último día (por defecto, hoy)");
        agrega_numero(orden, "--almacen", opciones->almacen, "Sólo los cargos de este almacén");
        agrega_numero(orden, "--proveedor", opciones->proveedor, "Sólo los cargos de este proveedor");
        agrega_numero(orden, "--primeros", opciones->primeros, "Sólo los N primeros, y los demás juntos");
        const auto* formato = agrega_formato(orden, opciones->formato,
            { "tabla", "csv", "json", "xlsx", "png", "svg", "pdf" },
            "tabla, csv, json, xlsx, png, svg o pdf (por defecto, como acabe el nombre de --salida)");
        orden.add_option("--salida", opciones->salida, "Fichero en el que se escribe");
        return [&comunes = entorno.comunes, dibuja = entorno.ventanas.dibuja_resumen, opciones, desde, hasta,
                   con_desde, con_hasta, formato] {
            if (!con_desde->empty())
                opciones->desde = *desde;
            if (!con_hasta->empty())
                opciones->hasta = *hasta;
            comprueba_resumen(*opciones, !formato->empty());
            return resumen(comunes, *opciones, dibuja);
        };
    }

    Corre declara_mostrar(CLI::App& orden, const Entorno& entorno)
    {
        agrega_comunes(orden, entorno.comunes);
        const auto opciones = std::make_shared<OpcionesCargo>();
        agrega_cargo(orden, *opciones);
        agrega_formato(orden, opciones->formato, { "texto", "json" }, "texto o json (por defecto, texto)");
        return [&comunes = entorno.comunes, opciones] { return mostrar(comunes, *opciones); };
    }

    Corre declara_historial(CLI::App& orden, const Entorno& entorno)
    {
        agrega_comunes(orden, entorno.comunes);
        const auto opciones = std::make_shared<OpcionesCargo>();
        agrega_cargo(orden, *opciones);
        agrega_formato(orden, opciones->formato, { "texto", "json" }, "texto o json (por defecto, texto)");
        return [&comunes = entorno.comunes, opciones] { return historial(comunes, *opciones); };
    }

    Corre declara_eliminar(CLI::App& orden, const Entorno& entorno)
    {
        agrega_comunes(orden, entorno.comunes);
        const auto opciones = std::make_shared<OpcionesCargo>();
        agrega_cargo(orden, *opciones);
        orden.add_flag("--si", opciones->si, "Sin preguntar");
        return [&comunes = entorno.comunes, opciones] { return eliminar(comunes, *opciones); };
    }

    /// Either codes with their year and warehouse or two dates; either a file or a folder.
    void comprueba_imprimir(const OpcionesImprimir& opciones, bool con_desde, bool con_hasta)
    {
        const auto exige = [](bool dado, const std::string& nombre) {
            if (!dado)
                throw MalUsada("Falta " + nombre + ".");
        };
        if (con_desde || con_hasta) {
            if (!opciones.codigos.empty() || opciones.ejercicio != 0)
                throw MalUsada("--desde: no va con códigos ni con --ejercicio.");
            exige(con_desde, "--desde");
            exige(con_hasta, "--hasta");
        } else {
            exige(!opciones.codigos.empty(), "CODIGO");
            exige(opciones.ejercicio != 0, "--ejercicio");
            exige(opciones.almacen != 0, "--almacen");
        }
        if (opciones.salida.empty() == opciones.carpeta.empty())
            throw MalUsada("--salida: se da una de las dos, --salida o --carpeta.");
    }

    Corre declara_imprimir(CLI::App& orden, const Entorno& entorno)
    {
        agrega_comunes(orden, entorno.comunes);
        const auto opciones = std::make_shared<OpcionesImprimir>();
        orden.add_option("CODIGO", opciones->codigos, "Códigos de los cargos, como AT260001");
        agrega_numero(orden, "--ejercicio", opciones->ejercicio, "Ejercicio de los cargos");
        agrega_numero(orden, "--almacen", opciones->almacen, "Almacén de los cargos");
        const auto* desde
            = agrega_dia(orden, "--desde", opciones->desde, "En vez de códigos: los cargos desde este día");
        const auto* hasta = agrega_dia(orden, "--hasta", opciones->hasta, "y hasta éste");
        orden.add_option("--salida", opciones->salida, "Fichero PDF en el que se escriben todos");
        orden.add_option("--carpeta", opciones->carpeta, "En vez de --salida: carpeta, un fichero por cargo");
        orden.add_option("--plantilla", opciones->plantilla, "Plantilla del documento");
        return [&comunes = entorno.comunes, imprime = entorno.ventanas.imprimir, opciones, desde, hasta] {
            comprueba_imprimir(*opciones, !desde->empty(), !hasta->empty());
            return imprime(comunes, *opciones);
        };
    }

    Corre declara_contabilizar(CLI::App& orden, const Entorno& entorno)
    {
        agrega_comunes(orden, entorno.comunes);
        const auto opciones = std::make_shared<OpcionesContabilizar>();
        agrega_cargo(orden, *opciones);
        orden.add_flag("--franquiciado", opciones->franquiciado, "El cargo es de un franquiciado");
        return [&comunes = entorno.comunes, opciones] { return contabilizar(comunes, *opciones); };
    }

    /// An option, or the arguments, with the names of entries.
    CLI::Option* agrega_asientos(CLI::App& orden, const std::string& nombre,
        std::vector<ClaveAsiento>& destino, const std::string& ayuda)
    {
        const auto pon = [&destino](const std::vector<std::string>& nombres) {
            for (const auto& uno : nombres)
                destino.push_back(de_nombre_corto(uno).value_or(ClaveAsiento()));
        };
        const auto comprueba = [](const std::string& texto) {
            return de_nombre_corto(texto)
                ? std::string()
                : "«" + texto + "» no es un asiento: se escribe EMPRESA/EJERCICIO/NÚMERO, como 1/2026/5.";
        };
        return orden.add_option_function<std::vector<std::string>>(nombre, pon, ayuda)
            ->check(CLI::Validator(comprueba, ""));
    }

    Corre declara_regularizar(CLI::App& orden, const Entorno& entorno)
    {
        agrega_comunes(orden, entorno.comunes);
        const auto opciones = std::make_shared<OpcionesRegularizar>();
        const auto fecha = std::make_shared<Date>();
        const auto* cuales = agrega_asientos(orden, "ASIENTO", opciones->asientos,
            "Sólo estos asientos sin cargo, como 1/2026/5: empresa contable, ejercicio y número");
        const auto* con_fecha
            = agrega_dia(orden, "--fecha", *fecha, "Día de los asientos nuevos (por defecto, hoy)");
        const auto* saldado = agrega_asientos(orden, "--saldado", opciones->saldados,
            "En vez de anularlos: estos asientos los ha saldado alguien a mano en Contabilidad");
        orden.add_flag("--si", opciones->si, "Sin preguntar");
        return [&comunes = entorno.comunes, opciones, fecha, cuales, con_fecha, saldado] {
            if (!saldado->empty() && (!cuales->empty() || !con_fecha->empty()))
                throw MalUsada("--saldado no va con asientos que anular ni con --fecha.");
            if (!con_fecha->empty())
                opciones->fecha = *fecha;
            return regularizar(comunes, *opciones);
        };
    }

    constexpr std::array tabla{
        Orden{ "crear", "Crea las bases de datos con la empresa de muestra", &declara_crear },
        Orden{ "copiar", "Copia la base de datos tal como está, mientras otros trabajan con ella",
            &declara_copiar },
        Orden{ "actualizar", "Pone al día las bases de datos que hizo una versión anterior del programa",
            &declara_actualizar },
        Orden{ "accesos", "Dice qué usuario es cada login, y lo cambia", &declara_accesos },
        Orden{ "verificar", "Comprueba las bases de datos enteras, sin cambiar nada", &declara_verificar },
        Orden{ "registrar", "Registra y contabiliza los cargos de un fichero CSV", &declara_registrar },
        Orden{ "listar", "Lista los cargos entre dos fechas", &declara_listar },
        Orden{ "resumen", "Suma los cargos por proveedor, mes, almacén o artículo, y los dibuja",
            &declara_resumen },
        Orden{
            "mostrar", "Muestra un cargo con su asiento, su impuesto y sus previsiones", &declara_mostrar },
        Orden{ "historial",
            "Dice quién ha registrado, cambiado, eliminado o anulado un cargo, cuándo y desde dónde",
            &declara_historial },
        Orden{ "eliminar", "Elimina un cargo; su asiento queda", &declara_eliminar },
        Orden{ "imprimir", "Escribe en PDF el documento de uno o varios cargos", &declara_imprimir },
        Orden{ "contabilizar", "Contabiliza un cargo que ha quedado sin asiento", &declara_contabilizar },
        Orden{ "regularizar", "Anula en Contabilidad los asientos de cargos eliminados o cambiados",
            &declara_regularizar },
        Orden{ "proveedor", "Lista, añade, cambia o elimina proveedores", &declara_proveedor },
        Orden{ "articulo", "Lista, añade, cambia o elimina artículos", &declara_articulo },
    };

}

std::span<const Orden> ordenes() noexcept { return tabla; }

} // namespace atipicos::app

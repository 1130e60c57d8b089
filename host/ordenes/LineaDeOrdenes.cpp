#include "host/ordenes/LineaDeOrdenes.hpp"

#include "host/ordenes/Ordenes.hpp"
#include "host/terminal/Interrupcion.hpp"
#include "runtime/MotivoSistema.hpp"

#include <CLI/CLI.hpp>

#include <algorithm>
#include <csignal>
#include <filesystem>
#include <iostream>
#include <new>

namespace atipicos::app {

namespace {

    const CLI::Validator dia(
        [](std::string& texto) {
            return Date::de_texto(texto)
                ? std::string()
                : "«" + texto + "» no es una fecha: se escribe dd/mm/aaaa, como 21/11/2026.";
        },
        "");

    /// Only plain digits, and those read as decimal: the library takes "010" for 8 and "0x10" for 16.
    const CLI::Validator numero(
        [](std::string& texto) {
            if (texto.empty() || texto.find_first_not_of("0123456789") != std::string::npos)
                return "«" + texto + "» no es un número.";
            texto.erase(0, std::min(texto.find_first_not_of('0'), texto.size() - 1));
            return std::string();
        },
        "");

    const CLI::Validator asiento(
        [](std::string& texto) {
            return de_nombre_corto(texto)
                ? std::string()
                : "«" + texto + "» no es un asiento: se escribe EMPRESA/EJERCICIO/NÚMERO, como 1/2026/5.";
        },
        "");

    const CLI::Validator conexion(
        [](std::string& texto) {
            try {
                static_cast<void>(bases::Lugar::de_conexion(texto));
                return std::string();
            } catch (const Error& error) {
                return error.descripcion();
            }
        },
        "");

    void en_castellano(CLI::App& app)
    {
        const auto formato = std::make_shared<CLI::Formatter>();
        for (const auto& [ingles, castellano] :
            { std::pair{ "Usage", "Uso" }, { "OPTIONS", "OPCIONES" }, { "SUBCOMMAND", "ORDEN" },
                { "SUBCOMMANDS", "ÓRDENES" }, { "Options", "Opciones" }, { "Subcommands", "Órdenes" },
                { "Positionals", "Argumentos" }, { "REQUIRED", "(obligatorio)" }, { "Excludes", "no con" },
                { "TEXT", "TEXTO" }, { "INT", "N" } })
            formato->label(ingles, castellano);
        formato->column_width(34);
        app.formatter(formato);
        app.set_help_flag("-h,--help", "Muestra esta ayuda y termina")->group("Opciones");
        for (auto* opcion : app.get_options([](const CLI::Option* una) { return una->nonpositional(); }))
            opcion->group("Opciones");
        for (auto* orden : app.get_subcommands([](const CLI::App*) { return true; })) {
            orden->group("Órdenes");
            en_castellano(*orden);
        }
    }

    std::string tras(const std::string& texto, const std::string& separador)
    {
        const auto lugar = texto.find(separador);
        return lugar == std::string::npos ? texto : texto.substr(lugar + separador.size());
    }

    std::string antes_de(const std::string& texto, const std::string& separador)
    {
        return texto.substr(0, texto.find(separador));
    }

    /// The library says in English what is wrong with the command line; this says it in Spanish.
    std::string explica(const CLI::ParseError& error)
    {
        std::string texto = error.what();
        if (dynamic_cast<const CLI::ExtrasError*>(&error) != nullptr)
            return "No se esperaba: " + tras(texto, ": ");
        if (dynamic_cast<const CLI::RequiredError*>(&error) != nullptr)
            return texto.find("subcommand") != std::string::npos
                ? "Falta la orden."
                : "Falta " + antes_de(texto, " is required") + ".";
        if (dynamic_cast<const CLI::ConversionError*>(&error) != nullptr)
            return "El valor no es un número admitido: " + tras(texto, ": ");
        if (dynamic_cast<const CLI::ExcludesError*>(&error) != nullptr)
            return texto.find("--saldado") != std::string::npos
                ? "--saldado no va con asientos que anular ni con --fecha."
                : "No se admiten a la vez --datos y --conexion.";
        if (dynamic_cast<const CLI::ArgumentMismatch*>(&error) != nullptr)
            return "Falta o sobra un valor en " + antes_de(texto, ":") + ".";
        return texto; // from our own checks
    }

    void agrega_cargo(CLI::App& orden, auto& opciones)
    {
        orden.add_option("CODIGO", opciones.codigo, "Código del cargo, como AT260001")->required();
        orden.add_option("--ejercicio", opciones.ejercicio, "Ejercicio del cargo")
            ->required()
            ->transform(numero);
        orden.add_option("--almacen", opciones.almacen, "Almacén del cargo")->required()->transform(numero);
    }

    struct Todo {
        OpcionesComunes comunes;
        OpcionesRegistrar registrar;
        OpcionesListar listar;
        OpcionesCargo cargo;
        OpcionesContabilizar contabilizar;
        OpcionesRegularizar regularizar;
        std::vector<std::string> asientos;
        std::vector<std::string> saldados;
        std::string fecha;
        OpcionesImprimir imprimir;
        std::filesystem::path copia;
        bool vacia = false;
        bool proponer = false;
        std::string desde;
        std::string hasta;
    };

    void donde_estan(CLI::App& orden, OpcionesComunes& comunes)
    {
        auto* datos = orden.add_option(
            "--datos", comunes.datos, "Carpeta de las bases de datos (por defecto, datos)");
        orden
            .add_option("--conexion", comunes.conexion,
                "En vez de una carpeta, sqlite:CARPETA, postgresql://usuario@servidor/base u odbc:CADENA")
            ->check(conexion)
            ->excludes(datos);
    }

    CLI::App* comun(CLI::App* orden, OpcionesComunes& comunes)
    {
        donde_estan(*orden, comunes);
        orden->add_option("--empresa", comunes.empresa, "Empresa de gestión (por defecto, la 1)")
            ->transform(numero);
        orden->add_option("--usuario", comunes.usuario, "Usuario (por defecto, el primero que haya)")
            ->transform(numero);
        return orden;
    }

    void declara_imprimir(CLI::App& app, Todo& todo)
    {
        auto& opciones = todo.imprimir;
        auto* imprimir
            = comun(app.add_subcommand("imprimir", "Escribe en PDF el documento de uno o varios cargos"),
                todo.comunes);
        imprimir->add_option("CODIGO", opciones.codigos, "Códigos de los cargos, como AT260001");
        imprimir->add_option("--ejercicio", opciones.ejercicio, "Ejercicio de los cargos")->transform(numero);
        imprimir->add_option("--almacen", opciones.almacen, "Almacén de los cargos")->transform(numero);
        imprimir->add_option("--desde", todo.desde, "En vez de códigos: los cargos desde este día")
            ->check(dia)
            ->type_name("DD/MM/AAAA");
        imprimir->add_option("--hasta", todo.hasta, "y hasta éste")->check(dia)->type_name("DD/MM/AAAA");
        imprimir->add_option("--salida", opciones.salida, "Fichero PDF en el que se escriben todos");
        imprimir->add_option(
            "--carpeta", opciones.carpeta, "En vez de --salida: carpeta, un fichero por cargo");
        imprimir->add_option("--plantilla", opciones.plantilla, "Plantilla del documento");
    }

    /// Either codes with their year and warehouse or two dates; either a file or a folder.
    void comprueba_imprimir(const Todo& todo)
    {
        const auto& opciones = todo.imprimir;
        const auto falta
            = [](const char* que) { throw CLI::RequiredError(que, CLI::ExitCodes::RequiredError); };
        const bool con_fechas = !todo.desde.empty() || !todo.hasta.empty();
        if (con_fechas && (!opciones.codigos.empty() || opciones.ejercicio != 0))
            throw CLI::ValidationError("--desde", "no va con códigos ni con --ejercicio.");
        if (con_fechas && (todo.desde.empty() || todo.hasta.empty()))
            falta(todo.desde.empty() ? "--desde is required" : "--hasta is required");
        if (!con_fechas && opciones.codigos.empty())
            falta("CODIGO is required");
        if (!con_fechas && (opciones.ejercicio == 0 || opciones.almacen == 0))
            falta(opciones.ejercicio == 0 ? "--ejercicio is required" : "--almacen is required");
        if (opciones.salida.empty() == opciones.carpeta.empty())
            throw CLI::ValidationError("--salida", "se da una de las dos, --salida o --carpeta.");
    }

    void declara_regularizar(CLI::App& app, Todo& todo)
    {
        auto* regularizar = comun(app.add_subcommand("regularizar",
                                      "Anula en Contabilidad los asientos de cargos eliminados o cambiados"),
            todo.comunes);
        auto* cuales = regularizar
                           ->add_option("ASIENTO", todo.asientos,
                               "Sólo estos asientos sin cargo, como 1/2026/5: empresa contable, ejercicio y "
                               "número")
                           ->check(asiento);
        auto* fecha
            = regularizar->add_option("--fecha", todo.fecha, "Día de los asientos nuevos (por defecto, hoy)")
                  ->check(dia)
                  ->type_name("DD/MM/AAAA");
        regularizar
            ->add_option("--saldado", todo.saldados,
                "En vez de anularlos: estos asientos los ha saldado alguien a mano en Contabilidad")
            ->check(asiento)
            ->excludes(cuales)
            ->excludes(fecha);
        regularizar->add_flag("--si", todo.regularizar.si, "Sin preguntar");
    }

    std::vector<ClaveAsiento> asientos_de(const std::vector<std::string>& nombres)
    {
        std::vector<ClaveAsiento> asientos;
        for (const auto& nombre : nombres)
            asientos.push_back(*de_nombre_corto(nombre));
        return asientos;
    }

    int despacha_regularizar(Todo& todo)
    {
        todo.regularizar.asientos = asientos_de(todo.asientos);
        todo.regularizar.saldados = asientos_de(todo.saldados);
        if (!todo.fecha.empty())
            todo.regularizar.fecha = Date::de_texto(todo.fecha);
        return regularizar(todo.comunes, todo.regularizar);
    }

    /// What is done to the databases as a whole.
    void declara_de_bases(CLI::App& app, Todo& todo)
    {
        auto* crear = app.add_subcommand("crear", "Crea las bases de datos con la empresa de muestra");
        donde_estan(*crear, todo.comunes);
        crear->add_flag("--vacia", todo.vacia, "Sólo las tablas, sin la empresa de muestra");

        auto* copiar = app.add_subcommand(
            "copiar", "Copia la base de datos tal como está, mientras otros trabajan con ella");
        donde_estan(*copiar, todo.comunes);
        copiar->add_option("DESTINO", todo.copia, "Fichero o carpeta en los que se hace la copia")
            ->required();

        auto* actualizar = app.add_subcommand(
            "actualizar", "Pone al día las bases de datos que hizo una versión anterior del programa");
        donde_estan(*actualizar, todo.comunes);

        auto* verificar
            = comun(app.add_subcommand("verificar", "Comprueba las bases de datos enteras, sin cambiar nada"),
                todo.comunes);
        verificar->add_flag("--proponer", todo.proponer,
            "También dice los pasos que arreglarían lo que difiere, sin dar ninguno");
    }

    void declara(CLI::App& app, Todo& todo)
    {
        comun(&app, todo.comunes);
        declara_de_bases(app, todo);

        auto* registrar
            = comun(app.add_subcommand("registrar", "Registra y contabiliza los cargos de un fichero CSV"),
                todo.comunes);
        registrar->add_option("FICHERO", todo.registrar.fichero, "Fichero CSV de reclamaciones")->required();
        registrar
            ->add_option("--otra-vez", todo.registrar.otra_vez,
                "También las reclamaciones de estas referencias (R1,R2), aunque ya se registraran")
            ->type_name("REFERENCIAS")
            ->expected(1)
            ->multi_option_policy(CLI::MultiOptionPolicy::TakeAll)
            ->allow_extra_args(false);
        registrar->add_flag(
            "--comprobar", todo.registrar.comprobar, "Sólo dice lo que está mal, sin escribir nada");
        registrar->add_flag("--sin-asiento", todo.registrar.sin_asiento,
            "Guarda sin asiento los cargos que no se pueden contabilizar");

        auto* listar = comun(app.add_subcommand("listar", "Lista los cargos entre dos fechas"), todo.comunes);
        listar->add_option("--desde", todo.desde, "Primer día")
            ->required()
            ->check(dia)
            ->type_name("DD/MM/AAAA");
        listar->add_option("--hasta", todo.hasta, "Último día")
            ->required()
            ->check(dia)
            ->type_name("DD/MM/AAAA");
        listar->add_option("--almacen", todo.listar.almacen, "Sólo los de este almacén")->transform(numero);
        listar->add_option("--proveedor", todo.listar.proveedor, "Sólo los de este proveedor")
            ->transform(numero);
        listar->add_option("--formato", todo.listar.formato, "tabla, csv, json o xlsx (por defecto, tabla)");
        listar->add_option("--salida", todo.listar.salida, "Fichero en el que se escribe");

        auto* mostrar = comun(
            app.add_subcommand("mostrar", "Muestra un cargo con su asiento, su impuesto y sus previsiones"),
            todo.comunes);
        agrega_cargo(*mostrar, todo.cargo);
        mostrar->add_option("--formato", todo.cargo.formato, "texto o json (por defecto, texto)");

        auto* eliminar
            = comun(app.add_subcommand("eliminar", "Elimina un cargo; su asiento queda"), todo.comunes);
        agrega_cargo(*eliminar, todo.cargo);
        eliminar->add_flag("--si", todo.cargo.si, "Sin preguntar");

        declara_imprimir(app, todo);

        auto* contabilizar
            = comun(app.add_subcommand("contabilizar", "Contabiliza un cargo que ha quedado sin asiento"),
                todo.comunes);
        agrega_cargo(*contabilizar, todo.contabilizar);
        contabilizar->add_flag(
            "--franquiciado", todo.contabilizar.franquiciado, "El cargo es de un franquiciado");

        declara_regularizar(app, todo);
    }

    void comprueba(const std::string& valor, std::initializer_list<const char*> admitidos)
    {
        for (const auto* uno : admitidos)
            if (valor == uno)
                return;
        throw CLI::ValidationError("--formato", "no se conoce el formato «" + valor + "».");
    }

    int despacha(CLI::App& app, Todo& todo, const Ventanas& ventanas)
    {
        if (app.get_subcommands().empty())
            return ventanas.principal(
                { todo.comunes, app.count("--empresa") > 0, app.count("--usuario") > 0 });
        const auto orden = app.get_subcommands().front()->get_name();
        if (orden == "crear")
            return crear(todo.comunes, todo.vacia);
        if (orden == "copiar")
            return copiar(todo.comunes, todo.copia);
        if (orden == "actualizar")
            return actualizar(todo.comunes);
        if (orden == "registrar")
            return registrar(todo.comunes, todo.registrar);
        if (orden == "listar") {
            comprueba(todo.listar.formato, { "tabla", "csv", "json", "xlsx" });
            if (todo.listar.formato == "xlsx" && todo.listar.salida.empty())
                throw CLI::ValidationError("--formato", "xlsx necesita --salida FICHERO.");
            todo.listar.desde = *Date::de_texto(todo.desde);
            todo.listar.hasta = *Date::de_texto(todo.hasta);
            return listar(todo.comunes, todo.listar);
        }
        if (orden == "mostrar") {
            comprueba(todo.cargo.formato, { "texto", "json" });
            return mostrar(todo.comunes, todo.cargo);
        }
        if (orden == "imprimir") {
            comprueba_imprimir(todo);
            if (!todo.desde.empty()) {
                todo.imprimir.desde = *Date::de_texto(todo.desde);
                todo.imprimir.hasta = *Date::de_texto(todo.hasta);
            }
            return ventanas.imprimir(todo.comunes, todo.imprimir);
        }
        if (orden == "eliminar")
            return eliminar(todo.comunes, todo.cargo);
        if (orden == "contabilizar")
            return contabilizar(todo.comunes, todo.contabilizar);
        if (orden == "regularizar")
            return despacha_regularizar(todo);
        return verificar(todo.comunes, todo.proponer);
    }

    int ejecuta_orden(int argc, const char* const* argv, const Ventanas& ventanas)
    {
        CLI::App app("Registra cargos y abonos atípicos a proveedores y los contabiliza.", "atipicos");
        Todo todo;
        declara(app, todo);
        en_castellano(app);
        app.set_version_flag("--version", "atipicos " ATIPICOS_VERSION, "Muestra la versión y termina")
            ->group("Opciones");
        app.require_subcommand(0, 1);
        try {
            app.parse(argc, argv);
            const int estado = despacha(app, todo, ventanas);
            std::cout.flush();
            if (!std::cout)
                throw Error(no_hecho, "atipicos", "No se pudo escribir todo en la salida.");
            return estado;
        } catch (const Interrumpido&) {
            std::cerr << "atipicos: Interrumpido.\n";
            return no_hecho;
        } catch (const CLI::CallForHelp&) {
            const auto elegidas = app.get_subcommands();
            std::cout << (elegidas.empty() ? app.help() : elegidas.front()->help("atipicos"));
            return hecho;
        } catch (const CLI::CallForVersion& version) {
            std::cout << version.what() << '\n';
            return hecho;
        } catch (const CLI::ParseError& error) {
            const std::string primero = argc > 1 ? argv[1] : "";
            const bool orden_desconocida
                = app.get_subcommands().empty() && !primero.empty() && primero[0] != '-';
            std::cerr << "atipicos: "
                      << (orden_desconocida ? "No se conoce la orden «" + primero + "»." : explica(error))
                      << "\nVea: atipicos --help\n";
            return mal_usado;
        } catch (const std::filesystem::filesystem_error& error) {
            std::cerr << "atipicos: «" << error.path1().string()
                      << "»: " << motivo_sistema(error.code().value()) << ".\n";
            return no_hecho;
        } catch (const std::bad_alloc&) {
            std::cerr << "atipicos: No hay memoria suficiente.\n";
            return no_hecho;
        } catch (const std::exception& error) {
            std::cerr << "atipicos: " << error.what() << '\n';
            return no_hecho;
        }
    }

}

int ejecuta(int argc, const char* const* argv, const Ventanas& ventanas)
{
    std::signal(SIGPIPE, SIG_IGN); // a reader that goes away is a failed write, told like any other
    const int estado = ejecuta_orden(argc, argv, ventanas);
    return Interrupcion::senal() == 0 ? estado : Interrupcion::estado();
}

} // namespace atipicos::app

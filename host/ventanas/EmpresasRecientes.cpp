#include "host/ventanas/EmpresasRecientes.hpp"

#include "controls/Texto.hpp"

#include <QSettings>

#include <array>
#include <filesystem>

namespace atipicos::app {

namespace {

    constexpr auto clave_recientes = "recientes";
    constexpr std::int32_t sin_lugar = 1000;

    QString como_se_teclea(const bases::Lugar& lugar)
    {
        if (lugar.clase() != bases::Lugar::Clase::carpeta)
            return a_qt(lugar.texto());
        return a_qt(std::filesystem::absolute(lugar.carpeta()).lexically_normal().string());
    }

}

QStringList EmpresasRecientes::lista() const
{
    return QSettings().value(QLatin1String(clave_recientes)).toStringList();
}

void EmpresasRecientes::apunta(const bases::Lugar& lugar) const
{
    auto todas = lista();
    const auto esta = como_se_teclea(lugar);
    todas.removeAll(esta);
    todas.prepend(esta);
    while (todas.size() > maximo)
        todas.removeLast();
    QSettings().setValue(QLatin1String(clave_recientes), todas);
}

void EmpresasRecientes::olvida(const QString& cual) const
{
    auto todas = lista();
    todas.removeAll(cual);
    QSettings().setValue(QLatin1String(clave_recientes), todas);
}

bases::Lugar lugar_tecleado(const QString& texto)
{
    const auto limpio = de_qt(texto.trimmed());
    if (limpio.empty())
        throw Error(sin_lugar, "atipicos", "Escriba una carpeta o la dirección de un servidor.");
    static constexpr std::array<std::string_view, 4> comienzos{
        "sqlite:", "postgresql:", "postgres:", "odbc:"
    };
    for (const auto comienzo : comienzos)
        if (limpio.starts_with(comienzo))
            return bases::Lugar::de_conexion(limpio);
    return { std::filesystem::path(limpio) };
}

} // namespace atipicos::app

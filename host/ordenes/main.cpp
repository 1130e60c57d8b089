#include "host/graficos/DibujaResumen.hpp"
#include "host/ordenes/LineaDeOrdenes.hpp"
#include "host/terminal/Interrupcion.hpp"

int main(int argc, char** argv)
{
    const atipicos::app::Interrupcion hasta_el_final; // the databases are closed before it ends
    return atipicos::app::ejecuta(argc, argv,
        { &atipicos::app::ventana_principal, &atipicos::app::imprimir, &atipicos::app::dibuja_resumen });
}

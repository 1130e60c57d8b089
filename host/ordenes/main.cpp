#include "host/ordenes/LineaDeOrdenes.hpp"

int main(int argc, char** argv)
{
    return atipicos::app::ejecuta(
        argc, argv, { &atipicos::app::ventana_principal, &atipicos::app::imprimir });
}

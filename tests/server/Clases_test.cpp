// The public classes from outside: names, numbers, types, and what happens to a caller who gets them wrong.
#include "tests/server/Cargado.hpp"

namespace atipicos::pruebas {
namespace {

    using testing::HasSubstr;
    using Nombres = std::vector<std::string>;

    DISPID id_de(const Despacho& objeto, const std::string& nombre)
    {
        auto ancho = utf16(nombre);
        auto* uno = ancho.data();
        DISPID id = 0;
        objeto.get()->GetIDsOfNames(iid_nulo, &uno, 1, 0, &id);
        return id;
    }

    void numerados(const Despacho& objeto, const Nombres& nombres)
    {
        for (std::size_t i = 0; i < nombres.size(); ++i) {
            const auto esperado = static_cast<DISPID>(i) + 1;
            if (nombres[i].empty())
                continue; // not by its place
            std::string otra_caja = nombres[i];
            std::transform(otra_caja.begin(), otra_caja.end(), otra_caja.begin(), ::toupper);
            EXPECT_EQ(id_de(objeto, nombres[i]), esperado) << nombres[i];
            EXPECT_EQ(id_de(objeto, otra_caja), esperado) << otra_caja;
        }
        const auto de_mas = static_cast<DISPID>(nombres.size()) + 1;
        EXPECT_EQ(Crudo(objeto, de_mas, DISPATCH_PROPERTYGET, {}).codigo, HRESULT{ DISP_E_MEMBERNOTFOUND });
    }

    /// A field: its type, its value in a new object, and another value.
    struct Campo {
        const char* nombre;
        Valor al_nacer;
        Valor otro;
    };

    void campos(const Despacho& objeto, const std::vector<Campo>& todos)
    {
        for (const auto& campo : todos) {
            const auto igual = [&](const Valor& esperado) {
                const Valor leido = objeto.llama(campo.nombre);
                ASSERT_EQ(leido.tipo(), esperado.tipo()) << campo.nombre;
                const bool iguales_son = leido.tipo() == VT_BSTR ? leido.texto() == esperado.texto()
                                                                 : leido.get().llVal == esperado.get().llVal;
                EXPECT_TRUE(iguales_son) << campo.nombre;
            };
            igual(campo.al_nacer);
            objeto.pon(campo.nombre, campo.otro);
            igual(campo.otro);
            // Nothing but a value: no object, no null, no text that is none of its kind.
            const auto id = objeto.id(campo.nombre);
            const auto pon = [&](Valor valor) { return Crudo(objeto, id, DISPATCH_PROPERTYPUT, { valor }); };
            EXPECT_EQ(pon(objeto.valor()).codigo, HRESULT{ DISP_E_TYPEMISMATCH }) << campo.nombre;
            EXPECT_EQ(pon(Valor::nulo()).codigo, HRESULT{ DISP_E_TYPEMISMATCH }) << campo.nombre;
            if (campo.otro.tipo() != VT_BSTR) {
                EXPECT_EQ(pon("ni número ni fecha").codigo, HRESULT{ DISP_E_TYPEMISMATCH }) << campo.nombre;
            }
            EXPECT_EQ(Crudo(objeto, id, DISPATCH_PROPERTYPUT, {}).codigo, HRESULT{ DISP_E_BADPARAMCOUNT });
            EXPECT_EQ(Crudo(objeto, id, DISPATCH_PROPERTYPUTREF, { campo.otro }).codigo,
                HRESULT{ DISP_E_MEMBERNOTFOUND });
            EXPECT_EQ(Crudo(objeto, id, DISPATCH_PROPERTYGET, { 1 }).codigo, HRESULT{ DISP_E_BADPARAMCOUNT });
            igual(campo.otro);
        }
    }

    std::int16_t corto(int valor) { return static_cast<std::int16_t>(valor); }

    using Clases = Cargado;

    TEST_F(Clases, every_class_is_made_by_its_name_and_no_other_is)
    {
        for (const auto& clase : clases_publicas) {
            const bool con_ventanas = clase.nombre.starts_with("frm") || clase.nombre == "clsView";
            const std::string nombre = "QVORComprasAtip." + std::string(clase.nombre);
            const auto esperado = con_ventanas && !ATIPICOS_CON_VENTANAS ? 429 : 0;
            EXPECT_EQ(error_de([&] { static_cast<void>(crea(nombre.c_str())); }), esperado) << nombre;
        }
        EXPECT_EQ(error_de([&] { static_cast<void>(crea("QVORComprasAtip.clsOtra")); }), 429);
    }

    TEST_F(Clases, the_factory_refuses_what_it_cannot_do)
    {
        void* objeto = this;
        EXPECT_EQ(dame_clase()(iid_nulo, iid_fabrica, &objeto), HRESULT{ CLASS_E_CLASSNOTAVAILABLE });
        EXPECT_EQ(objeto, nullptr);
        const auto& cargo = clases_publicas[3].clsid;
        EXPECT_EQ(dame_clase()(cargo, iid_despacho, &objeto), HRESULT{ E_NOINTERFACE });
        EXPECT_EQ(dame_clase()(cargo, iid_fabrica, nullptr), HRESULT{ E_POINTER });

        ASSERT_EQ(dame_clase()(cargo, iid_fabrica, &objeto), HRESULT{ S_OK });
        auto* fabrica = static_cast<IClassFactory*>(objeto);
        EXPECT_EQ(fabrica->CreateInstance(nullptr, iid_despacho, nullptr), HRESULT{ E_POINTER });
        EXPECT_EQ(fabrica->CreateInstance(fabrica, iid_despacho, &objeto), HRESULT{ CLASS_E_NOAGGREGATION });
        EXPECT_EQ(fabrica->CreateInstance(nullptr, iid_enumerador, &objeto), HRESULT{ E_NOINTERFACE });
        EXPECT_EQ(objeto, nullptr);
        EXPECT_EQ(fabrica->QueryInterface(iid_despacho, &objeto), HRESULT{ E_NOINTERFACE });
        EXPECT_EQ(fabrica->QueryInterface(iid_fabrica, nullptr), HRESULT{ E_POINTER });
        fabrica->Release();
    }

    TEST_F(Clases, members_are_numbered_in_their_order)
    {
        numerados(
            crea("clsAtipico_Lineas"), { "Count", "Remove", "Add", "AddByClass", "Clear", "", "Clone" });
        const auto lineas = crea("clsAtipico_Lineas");
        EXPECT_EQ(id_de(lineas, "item"), DISPID{ DISPID_VALUE }) << "it stands for the collection";
        EXPECT_EQ(Crudo(lineas, 6, DISPATCH_METHOD, { 1 }).numero, 5) << "and has its place among the others";
        numerados(crea("clsAtipico_Linea"),
            { "NumLinea", "Cod_Articulo", "Descripcion", "Unidades", "Precio", "Observaciones", "Id",
                "Copiar" });
        numerados(crea("clsAtipico"),
            { "Cod_Ejercicio", "Cod_Almacen", "Codigo", "Proveedor", "Fecha", "Importe", "Asiento",
                "EmpContable", "EjContable", "Hora", "Observ", "Cod_Compra", "Documento", "AplicarImpuesto",
                "Impuesto", "Tipo", "Lineas", "ConexionOrvalin", "EmpresaOrvalin", "Existe", "Insertar",
                "Modificar_Atipico", "Eliminar_Atipico", "Devuelve_Codigo" });
    }

    TEST_F(Clases, fields_of_a_charge_have_their_types_and_keep_what_they_are_given)
    {
        const Fecha dia{ 46347 }; // 21/11/2026
        campos(crea("clsAtipico"),
            { { "Cod_Ejercicio", corto(0), corto(2026) }, { "Cod_Almacen", corto(0), corto(-32768) },
                { "Codigo", "", "AT260001" }, { "Proveedor", 0, 2147483647 }, { "Fecha", Fecha{}, dia },
                { "Importe", Moneda{}, Moneda{ 9223372036854775807 } }, { "Asiento", 0, -2147483647 - 1 },
                { "EmpContable", corto(0), corto(32767) }, { "EjContable", corto(0), corto(2026) },
                { "Hora", Fecha{}, Fecha{ 0.375 } }, { "Observ", "", "Ñandú, 5 €, 𝄞 y \"comillas\"" },
                { "Cod_Compra", 0, 7 }, { "Documento", 0, 8 }, { "AplicarImpuesto", false, true },
                { "Impuesto", Moneda{}, Moneda{ 70000 } }, { "Tipo", 0, 9 } });
    }

    TEST_F(Clases, fields_of_a_line_have_their_types_and_keep_what_they_are_given)
    {
        campos(crea("clsAtipico_Linea"),
            { { "NumLinea", 0, 3 }, { "Cod_Articulo", 0, 1010 }, { "Descripcion", "", "Queso añejo" },
                { "Unidades", Moneda{}, Moneda{ 124850 } }, { "Precio", Moneda{}, Moneda{ -1 } },
                { "Observaciones", "", "Dos\r\nrenglones" }, { "Id", 0, 77 } });
    }

    TEST_F(Clases, values_of_other_types_are_converted_where_they_fit)
    {
        const auto cargo = crea("clsAtipico");
        cargo.pon("Cod_Ejercicio", "2.026");
        EXPECT_EQ(cargo.llama("Cod_Ejercicio").entero(), 2026);
        cargo.pon("Cod_Ejercicio", 2026.5); // half away from zero
        EXPECT_EQ(cargo.llama("Cod_Ejercicio").entero(), 2027);
        cargo.pon("Importe", "1.234,56");
        EXPECT_EQ(cargo.llama("Importe").moneda(), Moneda{ 12345600 });
        cargo.pon("Importe", 0.1);
        EXPECT_EQ(cargo.llama("Importe").moneda(), Moneda{ 1000 });
        cargo.pon("Fecha", "21/11/2026");
        EXPECT_EQ(cargo.llama("Fecha").fecha(), Fecha{ 46347 });
        cargo.pon("Fecha", Valor());
        EXPECT_EQ(cargo.llama("Fecha").fecha(), Fecha{ 0 });
        cargo.pon("Observ", 12.5);
        EXPECT_EQ(cargo.llama("Observ").texto(), "12,5");
        cargo.pon("AplicarImpuesto", 1);
        EXPECT_TRUE(cargo.llama("AplicarImpuesto").logico());
        EXPECT_EQ(error_de([&] { cargo.pon("Cod_Ejercicio", 40000); }), 6);
        EXPECT_EQ(error_de([&] { cargo.pon("Proveedor", 3e9); }), 6);
        EXPECT_EQ(error_de([&] { cargo.pon("Importe", 1e15); }), 6);
        EXPECT_EQ(error_de([&] { cargo.pon("Fecha", 1e9); }), 6);
    }

    /// A value whose type the client's own class does not make.
    template <class Escribe> Valor de_tipo(unsigned tipo, Escribe escribe)
    {
        Valor valor;
        valor.get().vt = static_cast<VARTYPE>(tipo);
        escribe(valor.get());
        return valor;
    }

    TEST_F(Clases, every_kind_of_number_that_a_host_may_pass_is_understood)
    {
        const auto cargo = crea("clsAtipico");
        const auto importe_de = [&](Valor valor) {
            cargo.pon("Importe", std::move(valor));
            return cargo.llama("Importe").moneda().diezmilesimas;
        };
        EXPECT_EQ(importe_de(de_tipo(VT_I1, [](auto& v) { v.cVal = -5; })), -50000);
        EXPECT_EQ(importe_de(de_tipo(VT_UI1, [](auto& v) { v.bVal = 250; })), 2500000);
        EXPECT_EQ(importe_de(de_tipo(VT_UI2, [](auto& v) { v.uiVal = 65535; })), 655350000);
        EXPECT_EQ(importe_de(de_tipo(VT_UI4, [](auto& v) { v.ulVal = 4294967295; })), 42949672950000);
        EXPECT_EQ(importe_de(de_tipo(VT_I8, [](auto& v) { v.llVal = -5000000000; })), -50000000000000);
        EXPECT_EQ(importe_de(de_tipo(VT_UI8, [](auto& v) { v.ullVal = 7; })), 70000);
        EXPECT_EQ(importe_de(de_tipo(VT_INT, [](auto& v) { v.intVal = -7; })), -70000);
        EXPECT_EQ(importe_de(de_tipo(VT_UINT, [](auto& v) { v.uintVal = 7; })), 70000);
        EXPECT_EQ(importe_de(de_tipo(VT_R4, [](auto& v) { v.fltVal = 0.1F; })), 1000);
        const auto decimal = [](unsigned escala, bool negativo, std::uint64_t cifras) {
            return de_tipo(VT_DECIMAL, [&](auto& v) {
                v.wReserved1 = static_cast<WORD>(escala | (negativo ? 0x8000u : 0u));
                v.llVal = static_cast<std::int64_t>(cifras);
            });
        };
        EXPECT_EQ(importe_de(decimal(2, true, 12345)), -1234500);
        EXPECT_EQ(importe_de(decimal(0, false, 0)), 0);
        EXPECT_EQ(importe_de(decimal(4, false, 1)), 1);
        EXPECT_EQ(importe_de(decimal(6, false, 1234567)), 12346);
    }

    TEST_F(Clases, arguments_by_reference_are_read_through)
    {
        const auto lineas = crea("clsAtipico_Lineas");
        std::int32_t articulo = 1010;
        BSTR texto = bstr("Añejo");
        Moneda unidades{ 20000 };
        std::int16_t posicion = 0;
        Valor en_variante(2.5);
        const auto linea
            = lineas.objeto("Add", de_tipo(VT_BYREF | VT_I4, [&](auto& v) { v.byref = &articulo; }),
                de_tipo(VT_BYREF | VT_BSTR, [&](auto& v) { v.byref = &texto; }),
                de_tipo(VT_BYREF | VT_CY, [&](auto& v) { v.byref = &unidades; }),
                Valor::referencia(en_variante), Valor::omitido(), Valor::omitido(),
                de_tipo(VT_BYREF | VT_I2, [&](auto& v) { v.byref = &posicion; }));
        EXPECT_EQ(linea.llama("Cod_Articulo").entero(), 1010);
        EXPECT_EQ(linea.llama("Descripcion").texto(), "Añejo");
        EXPECT_EQ(linea.llama("Unidades").moneda(), unidades);
        EXPECT_EQ(linea.llama("Precio").moneda(), Moneda{ 25000 });
        EXPECT_EQ(linea.llama("Observaciones").texto(), "");
        EXPECT_EQ(en_variante.real(), 2.5) << "the component writes nothing back";
        SysFreeString(texto);
    }

    TEST_F(Clases, missing_and_extra_arguments_are_told)
    {
        const auto lineas = crea("clsAtipico_Lineas");
        const auto cargo = crea("clsAtipico");
        const auto llama = [](const Despacho& objeto, const char* nombre, std::vector<Valor> argumentos) {
            return Crudo(objeto, objeto.id(nombre), DISPATCH_METHOD, std::move(argumentos)).codigo;
        };
        EXPECT_EQ(llama(lineas, "Item", {}), HRESULT{ DISP_E_BADPARAMCOUNT });
        EXPECT_EQ(llama(lineas, "Item", { 1, 2 }), HRESULT{ DISP_E_BADPARAMCOUNT });
        EXPECT_EQ(llama(lineas, "Item", { Valor::omitido() }), HRESULT{ DISP_E_PARAMNOTOPTIONAL });
        EXPECT_EQ(llama(lineas, "Count", { 1 }), HRESULT{ DISP_E_BADPARAMCOUNT });
        EXPECT_EQ(llama(lineas, "Add", { 1, "", 1, 1, "", 1, 0, 8 }), HRESULT{ DISP_E_BADPARAMCOUNT });
        EXPECT_EQ(llama(lineas, "Add", {}), HRESULT{ S_OK });
        EXPECT_EQ(llama(cargo, "Existe", { 2026, 1 }), HRESULT{ DISP_E_BADPARAMCOUNT });
        EXPECT_EQ(
            llama(cargo, "Devuelve_Codigo", { Valor::omitido(), 2026 }), HRESULT{ DISP_E_PARAMNOTOPTIONAL });
        for (const char* sin_argumentos : { "Insertar", "Modificar_Atipico", "Eliminar_Atipico" })
            EXPECT_EQ(llama(cargo, sin_argumentos, { 1 }), HRESULT{ DISP_E_BADPARAMCOUNT }) << sin_argumentos;
        EXPECT_EQ(lineas.llama("Count").entero(), 1) << "what was refused did nothing";

        const Crudo malo(lineas, lineas.id("Add"), DISPATCH_METHOD, { 1, "Texto", "no es un importe", 2 });
        EXPECT_EQ(malo.codigo, HRESULT{ DISP_E_TYPEMISMATCH });
        EXPECT_EQ(malo.argumento_malo, 1U) << "the third of four, counted from the end";
    }

    TEST_F(Clases, arguments_may_be_given_by_name)
    {
        const auto lineas = crea("clsAtipico_Lineas");
        auto metodo = utf16("add");
        auto descripcion = utf16("STRDESCRIPCION");
        auto otro = utf16("strOtro");
        OLECHAR* nombres[] = { metodo.data(), descripcion.data(), otro.data() };
        DISPID ids[] = { 0, 0, 0 };
        EXPECT_EQ(lineas.get()->GetIDsOfNames(iid_nulo, nombres, 3, 0, ids), HRESULT{ DISP_E_UNKNOWNNAME });
        EXPECT_EQ(ids[0], 3);
        EXPECT_EQ(ids[1], 1);
        EXPECT_EQ(ids[2], DISPID{ DISPID_UNKNOWN });

        // Named ones stand first in memory, so last here.
        const Crudo bien(lineas, 3, DISPATCH_METHOD, { 1010, "Por nombre" }, { 1 });
        ASSERT_EQ(bien.codigo, HRESULT{ S_OK });
        const auto linea = Despacho::de(bien.resultado.get());
        EXPECT_EQ(linea.llama("Cod_Articulo").entero(), 1010);
        EXPECT_EQ(linea.llama("Descripcion").texto(), "Por nombre");
        EXPECT_EQ(Crudo(lineas, 3, DISPATCH_METHOD, { 1010, "Dos veces" }, { 0 }).codigo,
            HRESULT{ DISP_E_PARAMNOTFOUND });
        EXPECT_EQ(Crudo(lineas, 3, DISPATCH_METHOD, { "No la hay" }, { 7 }).codigo,
            HRESULT{ DISP_E_PARAMNOTFOUND });
    }

    TEST_F(Clases, unknown_members_are_told)
    {
        const auto cargo = crea("clsAtipico");
        EXPECT_EQ(error_de([&] { cargo.llama("Cod_Empresa"); }), 438);
        EXPECT_EQ(error_de([&] { cargo.pon("Usuario", 1); }), 438);
        EXPECT_EQ(id_de(cargo, "Importé"), DISPID{ DISPID_UNKNOWN });
        EXPECT_EQ(id_de(cargo, ""), DISPID{ DISPID_UNKNOWN });
        EXPECT_EQ(id_de(cargo, "_NewEnum"), DISPID{ DISPID_UNKNOWN }) << "a charge is no collection";
        for (const DISPID id : { 0, -1, -4, -2147483647 - 1, 25, 2147483647 })
            EXPECT_EQ(Crudo(cargo, id, DISPATCH_PROPERTYGET, {}).codigo, HRESULT{ DISP_E_MEMBERNOTFOUND })
                << id;
        EXPECT_EQ(error_de([&] { cargo.pon("Insertar", 1); }), 438) << "a method cannot be set";
        EXPECT_EQ(error_de([&] { cargo.llama("EmpresaOrvalin"); }), 438) << "it can only be set";
        EXPECT_EQ(error_de([&] { cargo.llama("ConexionOrvalin"); }), 438);
    }

    TEST_F(Clases, null_places_are_refused)
    {
        const auto cargo = crea("clsAtipico");
        auto* objeto = cargo.get();
        DISPID id = 0;
        OLECHAR* nombre = nullptr;
        DISPPARAMS ninguno{};
        void* cara = nullptr;
        EXPECT_EQ(objeto->QueryInterface(iid_despacho, nullptr), HRESULT{ E_POINTER });
        EXPECT_EQ(objeto->QueryInterface(iid_enumerador, &cara), HRESULT{ E_NOINTERFACE });
        EXPECT_EQ(objeto->GetTypeInfoCount(nullptr), HRESULT{ E_POINTER });
        EXPECT_EQ(objeto->GetTypeInfo(0, 0, nullptr), HRESULT{ E_POINTER });
        EXPECT_EQ(objeto->GetIDsOfNames(iid_nulo, nullptr, 1, 0, &id), HRESULT{ E_INVALIDARG });
        EXPECT_EQ(objeto->GetIDsOfNames(iid_nulo, &nombre, 1, 0, nullptr), HRESULT{ E_INVALIDARG });
        EXPECT_EQ(
            objeto->GetIDsOfNames(iid_despacho, &nombre, 1, 0, &id), HRESULT{ DISP_E_UNKNOWNINTERFACE });
        EXPECT_EQ(objeto->Invoke(1, iid_nulo, 0, DISPATCH_PROPERTYGET, nullptr, nullptr, nullptr, nullptr),
            HRESULT{ E_INVALIDARG });
        EXPECT_EQ(
            objeto->Invoke(1, iid_despacho, 0, DISPATCH_PROPERTYGET, &ninguno, nullptr, nullptr, nullptr),
            HRESULT{ DISP_E_UNKNOWNINTERFACE });
        EXPECT_EQ(objeto->Invoke(1, iid_nulo, 0, DISPATCH_PROPERTYGET, &ninguno, nullptr, nullptr, nullptr),
            HRESULT{ S_OK })
            << "a result that nobody wants";
    }

    TEST_F(Clases, null_and_foreign_objects_are_refused_where_a_line_is_wanted)
    {
        const auto lineas = crea("clsAtipico_Lineas");
        const auto linea = crea("clsAtipico_Linea");
        const auto cargo = crea("clsAtipico");
        const auto ajeno = Anfitrion::crea({});
        const Despacho ninguno;
        for (const auto& [objeto, miembro] : { std::pair{ lineas, "AddByClass" }, { linea, "Copiar" } }) {
            EXPECT_EQ(error_de([&, o = objeto, m = miembro] { o.llama(m, ninguno.get()); }), 91);
            EXPECT_EQ(error_de([&, o = objeto, m = miembro] { o.llama(m, ajeno.get()); }), 13);
            EXPECT_EQ(error_de([&, o = objeto, m = miembro] { o.llama(m, cargo.get()); }), 13);
            EXPECT_EQ(error_de([&, o = objeto, m = miembro] { o.llama(m, 1); }), 13);
        }
        EXPECT_EQ(error_de([&] { cargo.pon("Lineas", linea.valor()); }), 13);
        EXPECT_EQ(error_de([&] { cargo.pon("Lineas", Valor()); }), 13);
        EXPECT_EQ(error_de([&] { cargo.pon("EmpresaOrvalin", 1); }), 13);
        EXPECT_EQ(cargo.objeto("Lineas").llama("Count").entero(), 0) << "it still has its own";
    }

    TEST_F(Clases, the_lines_of_a_charge_are_another_collection_or_none)
    {
        const auto cargo = crea("clsAtipico");
        cargo.objeto("Lineas").llama("Add", 1010, "de antes");
        cargo.pon("Lineas", Despacho().valor());
        EXPECT_FALSE(cargo.objeto("Lineas")) << "nothing";
        EXPECT_EQ(Crudo(cargo, cargo.id("Lineas"), DISPATCH_PROPERTYGET, { 1 }).numero, 91);

        const auto otras = crea("clsAtipico_Lineas");
        otras.llama("Add", 1011, "de ahora");
        cargo.pon("Lineas", otras.valor());
        EXPECT_EQ(cargo.objeto("Lineas", 1).llama("Descripcion").texto(), "de ahora");
        EXPECT_EQ(otras.get()->AddRef(), 2U);
        otras.get()->Release();
    }

    TEST_F(Clases, the_components_own_date_texts_are_read_with_their_times)
    {
        const auto cargo = crea("clsAtipico");
        cargo.pon("Hora", "21/11/2026 9:05:03");
        EXPECT_EQ(cargo.llama("Hora").fecha(), Fecha{ 46347 + 32'703 / 86'400.0 });
        cargo.pon("Hora", "18:00:00");
        EXPECT_EQ(cargo.llama("Hora").fecha(), Fecha{ 0.75 });
        EXPECT_EQ(error_de([&] { cargo.pon("Hora", "24:00:00"); }), 13);
    }

    TEST_F(Clases, an_error_carries_number_source_and_description)
    {
        const auto lineas = crea("clsAtipico_Lineas");
        const Crudo fuera(lineas, lineas.id("Item"), DISPATCH_METHOD, { 1 });
        EXPECT_EQ(fuera.codigo, HRESULT{ DISP_E_EXCEPTION });
        EXPECT_EQ(fuera.numero, 5);
        EXPECT_EQ(fuera.fuente, "QVORComprasAtip");
        EXPECT_EQ(fuera.descripcion, "Llamada a procedimiento o argumento no válidos");

        const auto cargo = crea("clsAtipico");
        const Crudo sin_fecha(cargo, cargo.id("Devuelve_Codigo"), DISPATCH_METHOD, { false, 2026 });
        EXPECT_EQ(sin_fecha.numero, 1);
        EXPECT_EQ(sin_fecha.fuente, "QVORComprasAtip:DevCodigo");
        EXPECT_EQ(sin_fecha.descripcion, "Se necesita la fecha para devolver el código de cargo/abono");
        EXPECT_EQ(error_de([&] { cargo.llama("Existe", 2026, 1, "AT260001"); }), 91) << "no context was set";
    }

}
}

#include "server/TipoExpuesto.hpp"

#ifdef _WIN32
#include "automation/Texto.hpp"

#include <array>
#include <vector>
#endif

namespace atipicos::server {

#ifndef _WIN32

ITypeInfo* tipo_de(const Clase& /*clase*/) { return nullptr; }

#else

namespace {

    constexpr GUID iid_tipos{ 0x00020402, 0, 0, { 0xC0, 0, 0, 0, 0, 0, 0, 0x46 } };
    constexpr GUID libid{ 0xd3390125, 0x5bdd, 0x445d, { 0x86, 0x96, 0xfb, 0x1a, 0x53, 0xfa, 0x8f, 0x77 } };

    void exige(HRESULT codigo)
    {
        if (FAILED(codigo))
            throw Fallo(codigo, "QVORComprasAtip", "El sistema no da la información de tipos");
    }

    /// A hold on an object of the system.
    template <class Interfaz> class Sosten {
    public:
        Sosten() = default;
        Sosten(const Sosten&) = delete;
        Sosten& operator=(const Sosten&) = delete;
        ~Sosten()
        {
            if (m_objeto != nullptr)
                m_objeto->Release();
        }
        [[nodiscard]] Interfaz** sitio() noexcept { return &m_objeto; }
        [[nodiscard]] explicit operator bool() const noexcept { return m_objeto != nullptr; }
        Interfaz& operator*() const noexcept { return *m_objeto; }
        Interfaz* operator->() const noexcept { return m_objeto; }

    private:
        Interfaz* m_objeto = nullptr;
    };

    VARTYPE vt_de(Tipo tipo)
    {
        static constexpr std::array<VARTYPE, 8> todos{ VT_VOID, VT_I2, VT_I4, VT_CY, VT_DATE, VT_BSTR,
            VT_BOOL, VT_DISPATCH };
        return todos.at(static_cast<std::size_t>(tipo));
    }

    /// One function of an interface, with all that its description points to.
    class Funcion {
    public:
        Funcion(DISPID numero, INVOKEKIND uso, VARTYPE resultado, const std::string& nombre)
        {
            m_descripcion.memid = numero;
            m_descripcion.funckind = FUNC_DISPATCH;
            m_descripcion.invkind = uso;
            m_descripcion.callconv = CC_STDCALL;
            m_descripcion.elemdescFunc.tdesc.vt = resultado;
            m_nombres.push_back(utf16(nombre));
        }
        void pide(const Argumento& argumento, Tipo tipo)
        {
            auto& apuntado = m_apuntados[m_cuantos];
            apuntado.vt = vt_de(tipo);
            auto& parametro = m_parametros[m_cuantos++];
            parametro.tdesc = apuntado;
            if (argumento.por_referencia) {
                parametro.tdesc.vt = VT_PTR;
                parametro.tdesc.lptdesc = &apuntado;
            }
            parametro.paramdesc.wParamFlags
                = static_cast<USHORT>(PARAMFLAG_FIN | (argumento.por_referencia ? PARAMFLAG_FOUT : 0)
                    | (argumento.opcional ? PARAMFLAG_FOPT : 0));
            m_nombres.push_back(utf16(argumento.nombre));
        }
        void restringe() { m_descripcion.wFuncFlags = FUNCFLAG_FRESTRICTED; }
        void anade_a(ICreateTypeInfo& tipo, UINT lugar)
        {
            m_descripcion.cParams = static_cast<SHORT>(m_cuantos);
            m_descripcion.lprgelemdescParam = m_parametros.data();
            exige(tipo.AddFuncDesc(lugar, &m_descripcion));
            std::vector<OLECHAR*> nombres;
            for (auto& nombre : m_nombres)
                nombres.push_back(nombre.data());
            if ((m_descripcion.invkind & (INVOKE_PROPERTYPUT | INVOKE_PROPERTYPUTREF)) != 0)
                nombres.pop_back(); // what a property is set to has no name here
            exige(tipo.SetFuncAndParamNames(lugar, nombres.data(), static_cast<UINT>(nombres.size())));
        }

    private:
        static constexpr std::size_t los_mas = 8;

        FUNCDESC m_descripcion{};
        std::array<ELEMDESC, los_mas> m_parametros{};
        std::array<TYPEDESC, los_mas> m_apuntados{};
        std::size_t m_cuantos = 0;
        std::vector<TextoAncho> m_nombres;
    };

    void anade(ICreateTypeInfo& tipo, const Miembro& miembro, DISPID numero, UINT& lugar)
    {
        const std::string nombre(miembro.nombre);
        if (miembro.lee != nullptr) {
            Funcion lee(
                numero, miembro.es_metodo ? INVOKE_FUNC : INVOKE_PROPERTYGET, vt_de(miembro.tipo), nombre);
            for (const auto& argumento : miembro.argumentos)
                lee.pide(argumento, argumento.tipo);
            lee.anade_a(tipo, lugar++);
        }
        if (miembro.pone != nullptr) {
            const bool objeto = miembro.tipo == Tipo::Objeto;
            Funcion pone(numero, objeto ? INVOKE_PROPERTYPUTREF : INVOKE_PROPERTYPUT, VT_VOID, nombre);
            pone.pide(miembro.asignado, miembro.tipo);
            pone.anade_a(tipo, lugar++);
        }
    }

    void anade(ICreateTypeLib2& biblioteca, const Clase& clase)
    {
        auto nombre = utf16("_" + std::string(clase.publica.nombre));
        Sosten<ICreateTypeInfo> tipo;
        exige(biblioteca.CreateTypeInfo(nombre.data(), TKIND_DISPATCH, tipo.sitio()));
        exige(tipo->SetGuid(clase.publica.iid));
        exige(tipo->SetTypeFlags(TYPEFLAG_FDISPATCHABLE));
        UINT lugar = 0;
        for (std::size_t i = 0; i < clase.miembros.size(); ++i)
            anade(*tipo, clase.miembros[i], numero_de(clase, i), lugar);
        if (clase.elemento != nullptr) {
            Funcion recorre(DISPID_NEWENUM, INVOKE_FUNC, VT_UNKNOWN, "_NewEnum");
            recorre.restringe();
            recorre.anade_a(*tipo, lugar);
        }
        exige(tipo->LayOut());
    }

    /// All classes, in memory: nothing is written. Made when it is first asked for.
    ITypeLib& biblioteca_de_tipos()
    {
        static Sosten<ITypeLib> tipos;
        if (!tipos) {
            Sosten<ICreateTypeLib2> nueva;
            exige(CreateTypeLib2(SYS_WIN64, L"QVORComprasAtip.tlb", nueva.sitio()));
            auto nombre = utf16(nombre_componente);
            exige(nueva->SetName(nombre.data()));
            exige(nueva->SetGuid(libid));
            exige(nueva->SetVersion(1, 0));
            for (const auto* clase : clases())
                anade(*nueva, *clase);
            exige(nueva->QueryInterface(iid_tipos, reinterpret_cast<void**>(tipos.sitio())));
        }
        return *tipos;
    }

}

ITypeInfo* tipo_de(const Clase& clase)
{
    ITypeInfo* tipo = nullptr;
    exige(biblioteca_de_tipos().GetTypeInfoOfGuid(clase.publica.iid, &tipo));
    return tipo;
}

#endif

} // namespace atipicos::server

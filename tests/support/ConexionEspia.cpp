#include "tests/support/ConexionEspia.hpp"

#include <utility>

namespace atipicos::pruebas {

namespace {

    class FilasEspia final : public adodb::Recordset {
    public:
        FilasEspia(ConexionEspia& espia, std::unique_ptr<adodb::Recordset> reales)
            : m_espia(espia)
            , m_reales(std::move(reales))
        {
        }

        void Open(const std::string& sql, adodb::CursorType cursor, adodb::LockType bloqueo,
            adodb::CommandType tipo, Donde donde) override
        {
            m_espia.pasa("OPEN " + sql, donde);
            m_reales->Open(sql, cursor, bloqueo, tipo, donde);
        }
        bool Eof() const noexcept override { return m_reales->Eof(); }
        void MoveNext(Donde donde) override
        {
            m_espia.avanza(donde);
            m_reales->MoveNext(donde);
        }
        std::size_t Count() const noexcept override { return m_reales->Count(); }
        adodb::Field& Fields(std::string_view nombre, Donde donde) override
        {
            return m_reales->Fields(nombre, donde);
        }
        adodb::Field& Fields(std::size_t posicion, Donde donde) override
        {
            return m_reales->Fields(posicion, donde);
        }
        void AddNew(Donde donde) override { m_reales->AddNew(donde); }
        void Update(Donde donde) override
        {
            m_espia.pasa("UPDATE", donde);
            m_reales->Update(donde);
        }
        void Close(Donde donde) override { m_reales->Close(donde); }

    private:
        ConexionEspia& m_espia;
        std::unique_ptr<adodb::Recordset> m_reales;
    };

}

ConexionEspia::ConexionEspia(
    std::string nombre, std::shared_ptr<adodb::Connection> real, std::shared_ptr<Parte> parte)
    : m_nombre(std::move(nombre))
    , m_real(std::move(real))
    , m_parte(std::move(parte))
{
}

void ConexionEspia::pasa(const std::string& dicha, Donde donde)
{
    m_parte->dichas.push_back(m_nombre + " " + dicha);
    if (m_parte->antes)
        m_parte->antes(m_parte->dichas.back());
    const bool toca = m_parte->dichas.size() == m_parte->falla_en;
    if (toca && m_parte->al_llegar) {
        m_parte->al_llegar();
        return;
    }
    if (toca && m_parte->conexion_perdida) {
        m_perdida = true;
        if (m_en_transaccion) // what the database does when its client is gone
            m_real->RollbackTrans();
    }
    if (toca || m_perdida)
        throw adodb::ErrorBaseDatos(m_perdida ? adodb::Categoria::conexion : adodb::Categoria::otra, "Prueba",
            Parte::descripcion, dicha, donde);
}

void ConexionEspia::avanza(Donde donde)
{
    if (m_parte->falla_al_avanzar > 0 && --m_parte->falla_al_avanzar == 0)
        throw adodb::ErrorBaseDatos(adodb::Categoria::otra, "Prueba", Parte::descripcion, "MoveNext", donde);
}

void ConexionEspia::Execute(
    const std::string& sql, std::int32_t* afectadas, adodb::CommandType tipo, Donde donde)
{
    pasa("EXEC " + sql, donde);
    m_real->Execute(sql, afectadas, tipo, donde);
}

void ConexionEspia::BeginTrans(Donde donde)
{
    pasa("BEGIN", donde);
    m_real->BeginTrans(donde);
    m_en_transaccion = true;
}

void ConexionEspia::CommitTrans(Donde donde)
{
    pasa("COMMIT", donde);
    m_real->CommitTrans(donde);
    m_en_transaccion = false;
}

void ConexionEspia::RollbackTrans(Donde donde)
{
    pasa("ROLLBACK", donde);
    m_real->RollbackTrans(donde);
    m_en_transaccion = false;
}

std::unique_ptr<adodb::Recordset> ConexionEspia::CreateRecordset()
{
    return std::make_unique<FilasEspia>(*this, m_real->CreateRecordset());
}

} // namespace atipicos::pruebas

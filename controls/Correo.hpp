#pragma once

#include "runtime/Error.hpp"

#include <QString>

/// The person's own mail program, which is handed a message to look at, to address and to send: this program
/// sends nothing itself.
namespace atipicos::Correo {

/// A file of that name and the ending ".pdf" in a new folder of its own, which nobody else can enter. It
/// stays until the message has long been sent: mail programs read it then. What is older than a week goes.
/// Raises an `Error` where the folder cannot be made.
[[nodiscard]] QString fichero_nuevo(const QString& nombre, Donde donde = Donde::aqui());

/// Opens a new message with the file attached, and returns when the mail program has it. Raises an `Error`
/// that says what to do when there is no mail program, or it refuses.
void entrega(const QString& fichero, const QString& asunto, Donde donde = Donde::aqui());

} // namespace atipicos::Correo

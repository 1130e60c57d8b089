#pragma once

class QLineEdit;
class QPlainTextEdit;
class QString;

namespace atipicos {

/// Every ' becomes ´: a quote would end the text in the statement that stores it.
[[nodiscard]] QString sin_comillas(QString texto);

/// From now on the box does that to whatever comes into it, typed, pasted, dropped or set, as it comes.
void pon_sin_comillas(QLineEdit& caja);
void pon_sin_comillas(QPlainTextEdit& caja);

} // namespace atipicos

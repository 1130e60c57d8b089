#pragma once

class QKeySequence;
class QWidget;

namespace atipicos {

/// In the window of `campo` the keys lead to it, and its tool tip says so: for fields whose captions are
/// given.
void pon_atajo(QWidget& campo, const QKeySequence& teclas);

} // namespace atipicos

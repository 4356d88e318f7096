#pragma once

#include <QString>

namespace ui {

/// Makes a control under its name. The arguments are those of its constructor; whatever layout or
/// parent takes it in owns it.
template <typename Control, typename... Arguments>
Control *named(const QString &name, Arguments... arguments)
{
    auto *control = new Control(arguments...);
    control->setObjectName(name);
    return control;
}

} // namespace ui

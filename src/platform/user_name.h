#pragma once

#include <QString>

/// The login name of the user who runs the program, from the system's user database; "" if it has none.
QString loginName();

#include "Terminal.h"

#include <QByteArray>
#include <QtGlobal>

#include <unistd.h>

bool isColourWanted()
{
    return isatty(STDOUT_FILENO) != 0 && qEnvironmentVariableIsEmpty("NO_COLOR") &&
           qgetenv("TERM") != "dumb";
}

bool isSomeoneWatching()
{
    return isatty(STDERR_FILENO) != 0;
}

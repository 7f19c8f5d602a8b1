#include "Terminal.h"

#include <QByteArray>
#include <QtGlobal>

#include <unistd.h>

bool isColourWanted()
{
    return isatty(STDOUT_FILENO) != 0 && qgetenv("NO_COLOR").isEmpty() && qgetenv("TERM") != "dumb";
}

bool isSomeoneWatching()
{
    return isatty(STDERR_FILENO) != 0;
}

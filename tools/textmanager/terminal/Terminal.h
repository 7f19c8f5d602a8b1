#pragma once

/** Whether results are read by someone who sees colours: on a terminal, unless NO_COLOR is set. */
bool isColourWanted();

/** Whether someone sees messages as they come. */
bool isSomeoneWatching();

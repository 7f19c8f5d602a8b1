#pragma once

/** Where something stands in a file, as an editor shows it. */
struct Place {
    int line = 0;   ///< from 1; 0 when there is no place
    int column = 0; ///< in characters, from 1; 0 when there is no place
};

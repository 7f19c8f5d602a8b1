#pragma once

/** What LanguageInformation tells the library about the warnings that it gives. */
namespace LanguageInformationWarnings
{

/** How many warnings it has given in this thread so far. */
unsigned countInThisThread();

} // namespace LanguageInformationWarnings

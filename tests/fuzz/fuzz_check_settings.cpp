// The file of a folder's check settings.

#include "CheckSettings.h"
#include "FuzzSupport.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    static const FuzzFolder folder;
    FuzzInput input(data, size);
    Finding finding;
    finding.id = "same-as-base";
    finding.url = input.takeText();
    folder.write(CheckSettings::fileName(), input.rest());

    CheckSettings settings;
    settings.readFrom(folder.path());
    require(!settings.base.isEmpty(), "a base language");
    require(settings.shortLength >= 0, "a length");
    require(!settings.failUnder || (*settings.failUnder >= 0 && *settings.failUnder <= 100),
            "a share in per cent");
    const int lineCount = input.rest().count('\n') + input.rest().count('\r') + 1;
    for (const Finding& fault : qAsConst(settings.faults)) {
        require(!fault.reason.isEmpty(), "a reason");
        require(fault.place.line >= 1 && fault.place.line <= lineCount, "a line of the file");
        require(fault.place.column >= 1, "a column");
    }
    const bool isIgnored = settings.isIgnored(finding);
    require(!isIgnored || !settings.ignore.isEmpty(), "nothing ignored without a rule");
    return 0;
}

// A format's name, and a file of it: read, written again and imported.

#include "ExchangeFormat.h"
#include "FuzzSupport.h"
#include "LanguageImport.h"
#include "PlainWalk.h"

#include <QDir>

namespace
{

class Folder : public FuzzFolder
{
public:
    Folder()
    {
        write("en_US.json", R"({"Content": {"A": {"text": "Save %1", "comment": "c",
                               "childs": {"B": {"text": "Open", "comment": "d"}}}}})");
        QDir(path()).mkdir("short");
        write("short/de_DE.json", R"({"Content": {"A": {"text": "S", "comment": "c"}}})");
        write("de_DE.json", R"({"Content": {"A": {"text": "Sichern %1", "comment": "c"}}})");
    }
};

/** What a format can carry comes back as it was. */
void compareWritten(const ExchangeFormat& format, const ExchangeFile& file)
{
    ExchangeFile back;
    require(!format.read(format.write(file), back), "what was written to be read");
    ExchangeFile again;
    require(!format.read(format.write(back), again), "what was written again to be read");
    require(again.units.size() == back.units.size(), "as many units");
    for (int i = 0; i < back.units.size(); ++i) {
        const ExchangeUnit& one = back.units.at(i);
        const ExchangeUnit& other = again.units.at(i);
        require(one.url == other.url && one.isShort == other.isShort, "the same URL");
        require(one.text == other.text && one.baseText == other.baseText, "the same texts");
    }
}

void import(const ExchangeFile& file)
{
    static const Folder path;
    static const ExchangeFolder folder(path.path(), "short", "en_US");
    QString fault;
    const auto import = LanguageImport::open(folder, "de_DE", file, {true, true}, fault);
    require(import != nullptr || !fault.isEmpty(), "a reason");
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    FuzzInput input(data, size);
    const ExchangeFormat* format = ExchangeFormat::byName(input.takeText());
    if (format == nullptr)
        return 0;
    ExchangeFile file;
    if (const auto fault = format->read(input.rest(), file)) {
        require(!fault->reason.isEmpty(), "a reason");
        return 0;
    }
    compareWritten(*format, file);
    import(file);
    return 0;
}

// Fuzzes the PE resource reader: version blocks, their queries and icon groups, both inside a
// PE image and with the input taken as a bare version block.

#include "PeResources_p.h"

#include <QByteArrayView>
#include <QString>
#include <algorithm>
#include <cstddef>
#include <cstdint>

namespace {

void queryAll(QByteArrayView block) {
    static const char16_t* const keys[] = {u"\\CompanyName", u"\\ProductVersion", u"\\Comments"};
    const auto table = qxpe::firstTranslation(block);
    const QString prefix =
        QStringLiteral("\\StringFileInfo\\") + table.value_or(QStringLiteral("040904B0"));
    for (const char16_t* key : keys)
        qxpe::queryText(block, prefix + QString::fromUtf16(key));
    qxpe::queryValue(block, u"\\");
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const QByteArrayView input(data, qsizetype(size));
    queryAll(qxpe::versionInfo(input));
    queryAll(input);
    const int groups = std::min(qxpe::iconGroupCount(input), 4);
    for (int i = 0; i < groups; ++i)
        qxpe::icoFile(qxpe::iconGroup(input, i));
    return 0;
}

#include "desktop/text.h"

#include <QStringDecoder>

namespace welvane {

QString shown(std::string_view bytes) {
    const QByteArrayView view(bytes.data(), static_cast<qsizetype>(bytes.size()));
    QStringDecoder decoder(QStringDecoder::Utf8, QStringDecoder::Flag::Stateless);
    QString text = decoder(view);
    return decoder.hasError() ? QString::fromLatin1(view) : text;
}

std::string typed(const QString& text) {
    return text.toStdString();
}

}  // namespace welvane

#include "platform/qt/pictogram.h"

#include <QApplication>
#include <QFile>
#include <QIconEngine>
#include <QPainter>
#include <QPainterPath>
#include <QPalette>
#include <QRegularExpression>
#include <QXmlStreamReader>
#include <utility>
#include <vector>

namespace kalvo {

namespace {

constexpr qreal kGrid = 24;  // side of the drawings
constexpr qreal kStroke = 2;

struct Line {
    QPainterPath path;
    QColor color;  // invalid: that of the texts around it
};

qsizetype numbersOf(QChar command) {
    switch (command.unicode()) {
        case 'M':
        case 'L': return 2;
        case 'H':
        case 'V': return 1;
        case 'C': return 6;
        default: return 0;
    }
}

void draw(QPainterPath& path, QChar command, const QList<qreal>& n) {
    const QPointF at = path.currentPosition();
    switch (command.unicode()) {
        case 'M': path.moveTo(n[0], n[1]); break;
        case 'L': path.lineTo(n[0], n[1]); break;
        case 'H': path.lineTo(n[0], at.y()); break;
        case 'V': path.lineTo(at.x(), n[0]); break;
        case 'C': path.cubicTo(n[0], n[1], n[2], n[3], n[4], n[5]); break;
        case 'Z': path.closeSubpath(); break;
        default: break;
    }
}

QPainterPath pathOf(const QString& data) {
    static const QRegularExpression kToken("[MLHVCZ]|-?[0-9.]+");
    QPainterPath path;
    QChar command;
    QList<qreal> numbers;
    for (auto tokens = kToken.globalMatch(data); tokens.hasNext();) {
        const QString token = tokens.next().captured();
        if (token[0].isLetter())
            command = token[0];
        else
            numbers << token.toDouble();
        if (numbers.size() < numbersOf(command)) continue;
        draw(path, command, numbers);
        numbers.clear();
    }
    return path;
}

std::vector<Line> linesOf(const QString& name) {
    QFile file(":/pictogrammes/" + name + ".svg");
    if (!file.open(QIODevice::ReadOnly)) return {};
    std::vector<Line> lines;
    for (QXmlStreamReader xml(&file); !xml.atEnd();) {
        if (xml.readNext() != QXmlStreamReader::StartElement) continue;
        const auto text = [&](const char* key) {
            return xml.attributes().value(QLatin1String(key)).toString();
        };
        Line line;
        line.color = QColor(text("stroke"));
        if (xml.name() == QLatin1String("path")) line.path = pathOf(text("d"));
        if (xml.name() == QLatin1String("circle")) {
            const qreal radius = text("r").toDouble();
            line.path.addEllipse(QPointF(text("cx").toDouble(), text("cy").toDouble()), radius,
                                 radius);
        }
        if (!line.path.isEmpty()) lines.push_back(std::move(line));
    }
    return lines;
}

class StrokeEngine : public QIconEngine {
public:
    StrokeEngine(std::vector<Line> lines, const QColor& ink)
        : lines_(std::move(lines)), ink_(ink) {}

    void paint(QPainter* painter, const QRect& rect, QIcon::Mode mode, QIcon::State) override {
        const QPalette palette = QApplication::palette();
        const bool grey = mode == QIcon::Disabled;
        const QColor ink =
            ink_.isValid() && !grey
                ? ink_
                : palette.color(grey ? QPalette::Disabled : QPalette::Active, QPalette::ButtonText);
        painter->save();
        painter->setRenderHint(QPainter::Antialiasing);
        painter->translate(rect.topLeft());
        painter->scale(rect.width() / kGrid, rect.height() / kGrid);
        for (const Line& line : lines_)
            painter->strokePath(line.path,
                                QPen(line.color.isValid() && !grey ? line.color : ink, kStroke,
                                     Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
        painter->restore();
    }

    QPixmap pixmap(const QSize& size, QIcon::Mode mode, QIcon::State state) override {
        QPixmap pixmap(size);
        pixmap.fill(Qt::transparent);
        QPainter painter(&pixmap);
        paint(&painter, QRect({}, size), mode, state);
        return pixmap;
    }

    [[nodiscard]] QIconEngine* clone() const override { return new StrokeEngine(*this); }

private:
    std::vector<Line> lines_;
    QColor ink_;
};

}  // namespace

QIcon pictogram(const QString& name, const QColor& ink) {
    return QIcon(new StrokeEngine(linesOf(name), ink));
}

int PictogramStyle::styleHint(StyleHint hint, const QStyleOption* option, const QWidget* widget,
                              QStyleHintReturn* returnData) const {
    if (hint == SH_DialogButtonBox_ButtonsHaveIcons) return 0;
    return QProxyStyle::styleHint(hint, option, widget, returnData);
}

QIcon PictogramStyle::standardIcon(StandardPixmap picture, const QStyleOption* option,
                                   const QWidget* widget) const {
    switch (picture) {
        case SP_MessageBoxInformation: return pictogram("information");
        case SP_MessageBoxWarning: return pictogram("attention");
        case SP_MessageBoxCritical: return pictogram("erreur");
        case SP_MessageBoxQuestion: return pictogram("question");
        default: return QProxyStyle::standardIcon(picture, option, widget);
    }
}

}  // namespace kalvo

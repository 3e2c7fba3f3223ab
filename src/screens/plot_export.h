#pragma once

#include <QByteArray>
#include <QString>
#include <QStringList>

class QCustomPlot;
class QPainter;
class QRectF;
class QWidget;

namespace bellmark {

struct Plot;

/// What of a plot leaves the program: pictures, tables, paper. A picture is of the view as it stands, zoomed and with
/// its cursors, below the lines of a heading.

enum class PlotFile { Png, Svg, Pdf, Csv };

/// The kind that the file's ending names; a picture in dots for any other.
PlotFile PlotFileOf(const QString& path);

/// The bytes of a file. heading: title, run and date, a line each.
QByteArray PlotBytes(QCustomPlot& view, const Plot& plot, const QStringList& heading, PlotFile kind);

/// The samples within the view's ranges: series, both values and the note of the sample, under the captions of the
/// axes. Values have all their digits and a point, whatever the machine's language.
QString PlotTable(const QCustomPlot& view, const Plot& plot);

/// Draws the view with lines, not with dots, into a part of a painter's page.
void DrawPlot(QPainter& painter, QCustomPlot& view, const QRectF& place);

/// Asks for the printer and prints on its paper.
void PrintPlot(QCustomPlot& view, const QStringList& heading, QWidget* parent);

}  // namespace bellmark

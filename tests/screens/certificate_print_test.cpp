// The printed certificate as another program reads it: pdftotext gives the position of each word.

#include <gtest/gtest.h>

#include <QPageSize>
#include <QPdfWriter>
#include <QProcess>
#include <QRegularExpression>
#include <vector>

#include "platform/numbers.h"
#include "results/certificate.h"
#include "results/rich_text_reader.h"
#include "screens/formatted_document.h"
#include "tests/support/temporary_folder.h"

namespace bellmark {
namespace {

struct Word {
    double left, top, right, bottom;  // points, from the paper's upper left corner
    QString text;
};

struct PrintedSheet {
    qsizetype pages = 0;
    std::vector<Word> words;

    const Word& Find(const QString& text) const {
        for (const Word& word : words) {
            if (word.text == text) return word;
        }
        throw std::runtime_error("There is no " + text.toStdString());
    }
};

PrintedSheet ReadBack(const Path& pdf) {
    QProcess reader;
    reader.start("pdftotext", {"-bbox", QString::fromStdString(pdf.string()), "-"});
    if (!reader.waitForFinished()) throw std::runtime_error("pdftotext does not run");
    const QString html = QString::fromUtf8(reader.readAllStandardOutput());
    PrintedSheet sheet;
    sheet.pages = html.count("<page ");
    static const QRegularExpression pattern(R"re(<word xMin="(.*)" yMin="(.*)" xMax="(.*)" yMax="(.*)">(.*)</word>)re");
    for (auto match = pattern.globalMatch(html); match.hasNext();) {
        const auto found = match.next();
        const auto number = [&](int group) { return found.captured(group).toDouble(); };
        sheet.words.push_back({number(1), number(2), number(3), number(4), found.captured(5)});
    }
    return sheet;
}

constexpr int sensors = static_cast<int>(maxSensors);
constexpr const char* longNote =
    "A note of the operator that is long enough to fill more than one whole line of the sheet, so that it has to be "
    "broken at the same place as on the screen.";

/// The fullest certificate: four trials of everything, and as many sensors as a run can hold, whose gains are all
/// different. notes: of the operator, each of two lines.
FormattedText FullCertificate(std::size_t notes) {
    CalibrationRun run;
    run.DeviceOwner = "Owner";
    run.DeviceSerialNumber = "8002-123";
    run.LoadCellSerialNumber = "LC-9";
    run.LoadCellRefTrials = run.RefTrials = run.RelTrials = static_cast<int>(maxTrials);
    run.NumberSensors = sensors;
    for (int s = 0; s < sensors; ++s) {
        auto& sensor = run.Sensor.at(static_cast<std::size_t>(s));
        sensor.SerialNumber = "S-" + NumberText(s);
        sensor.InitialGain = 1.1 + s;
        for (std::size_t t = 0; t < maxTrials; ++t) {
            sensor.RefTrial[t].Gain = sensor.InitialGain + 0.01 + 0.01 * static_cast<double>(t);
            sensor.RelTrial[t].Gain = sensor.InitialGain + 0.05 + 0.01 * static_cast<double>(t);
        }
        sensor.FinalGain = sensor.InitialGain + 0.09;
    }
    run.LoadCellMessage = "All data checks passed";
    run.SensorRefMessage[0] = "Reference Calibrations Accepted.\r\nReference Trial Acceptance Criteria Met.";
    run.SensorRelMessage = "\r\nFinal Acceptance Critera are met for all sensors.";
    CenterConfig center;
    center.CalibrationCenter = "Center";
    for (std::size_t n = 0; n < notes; ++n) center.Notes.at(n) = longNote;
    RichText text(DiskFileSystem().ReadBytes(Path(BELLMARK_SOURCE_FOLDER) / "sample" / certificateTemplateName));
    FillCertificate(text, run, center, {true, true}, MakeDateTime(2012, 3, 9));
    return ReadRichText(CertificateRtf(text));
}

struct Paper {
    QPageSize::PageSizeId size;
    double width, height;  // points
};
constexpr Paper papers[] = {{QPageSize::A4, 595, 842}, {QPageSize::Letter, 612, 792}};

PrintedSheet Print(const Paper& paper, std::size_t notes) {
    const TemporaryFolder folder;
    const Path file = folder / "certificate.pdf";
    QPdfWriter writer(QString::fromStdString(file.string()));
    writer.setPageSize(QPageSize(paper.size));
    PrintDocument(writer, FullCertificate(notes));
    return ReadBack(file);
}

TEST(CertificateOnPaper, IsOnePageWithItsColumnsInPlace) {
    for (const Paper& paper : papers) {
        SCOPED_TRACE(paper.width);
        const PrintedSheet sheet = Print(paper, 1);
        ASSERT_EQ(sheet.pages, 1);
        for (const Word& word : sheet.words) {
            EXPECT_TRUE(word.left > 60 && word.right < paper.width - 60 && word.top > 50 &&
                        word.bottom < paper.height - 50)
                << word.text.toStdString();
        }
        // Six and a half inches in the middle of the paper; the tab stops are those of the template, in twentieths.
        const double leftEdge = (paper.width - 468) / 2;
        EXPECT_NEAR(sheet.Find("S-0").left, leftEdge, 1.5);
        EXPECT_NEAR(sheet.Find("8002-123").left, leftEdge + 7000 / 20.0, 1.5);
        const double stops[] = {2200, 2980, 3680, 4380, 5080, 5980, 6680, 7380, 8080, 9300};
        for (int s = 0; s < sensors; ++s) {
            const Word& serial = sheet.Find("S-" + QString::number(s));
            for (int column = 0; column < 10; ++column) {
                const Word& gain = sheet.Find(QString::number(1.1 + s + 0.01 * column, 'f', 3));
                EXPECT_NEAR(gain.right, leftEdge + stops[column] / 20, 1.5);
                EXPECT_NEAR(gain.top, serial.top, 0.5);
            }
        }
        // Found by who looks for it: no letters are joined to one sign, as "fi" may be.
        const Word& title = sheet.Find("Certificate");
        const Word& owner = sheet.Find("Owner");
        // Letters of ten points take one to one and a half times that, by the font; a title of eighteen in the same
        // font so much more.
        const double height = owner.bottom - owner.top;
        EXPECT_TRUE(height > 9.5 && height < 15) << height;
        EXPECT_NEAR((title.bottom - title.top) / height, 1.8, 0.02);
        EXPECT_GT(sheet.Find("screen.").top, sheet.Find("operator").top + 5);
    }
}

TEST(CertificateOnPaper, HasRoomForMessages) {
    for (const Paper& paper : papers) EXPECT_EQ(Print(paper, 3).pages, 1) << paper.width;
}

}  // namespace
}  // namespace bellmark

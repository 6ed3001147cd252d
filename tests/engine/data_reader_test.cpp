#include "engine/data_reader.h"

#include <cmath>
#include <random>

#include "engine/pass_fixture.h"

namespace welvane {
namespace {

/// What a record stores, in the plainest way: fields by words of a string, the index by rounding.
struct PlainReader {
    double start, step;
    int samples, columns;
    std::vector<std::vector<double>> matrix;

    PlainReader(double gridStart, double gridStep, int count, int width)
        : start(gridStart),
          step(gridStep),
          samples(count),
          columns(width),
          matrix(static_cast<std::size_t>(width), std::vector<double>(static_cast<std::size_t>(count), lasNull)) {}

    void store(const std::string& record) {
        std::vector<std::string> words;
        std::string word;
        for (const char c : record + " ") {
            if (c != ' ' && c != '\t') {
                word += c;
            } else if (!word.empty()) {
                words.push_back(word);
                word.clear();
            }
        }
        if (words.empty()) return;
        const double place = std::nearbyint((std::stod(words[0]) - start) / step + 1);
        if (place < 1 || place > samples) return;
        for (int column = 0; column < columns; ++column) {
            const auto field = static_cast<std::size_t>(column) + 1;
            matrix[static_cast<std::size_t>(column)][static_cast<std::size_t>(place) - 1] =
                field < words.size() ? val(words[field]) : 0.0;
        }
    }
};

class DataReaderTest : public test::PassTest {
  protected:
    InputSlot slot;

    /// Reads a file's bytes (all of it is data) onto a grid of `count` samples.
    Matrix read(const std::string& bytes, int columns, int count, double start, double step,
                ReadResult* result = nullptr, FailureList* failures = nullptr, int fixedWidth = 0) {
        slot.path = folder.write("data.las", bytes);
        slot.file = openLasFile(slot.path);
        slot.dataStart = 1;
        PassContext context(app, session, {});
        context.grid.start = start;
        context.grid.step = step;
        context.grid.sampleCount = count;
        context.fixedColumnWidth = static_cast<std::int16_t>(fixedWidth);
        context.inputMatrix = Matrix(columns, count);
        context.nullValue = lasNull;
        const ReadResult read = readDataIntoMatrix(context, slot, 0, columns - 1);
        if (result != nullptr) *result = read;
        if (failures != nullptr) *failures = context.report.failures;
        return std::move(context.inputMatrix);
    }
    static std::vector<double> column(const Matrix& matrix, int number) {
        const auto samples = matrix.column(number);
        return {samples.begin(), samples.end()};
    }
};

TEST_F(DataReaderTest, equalsAPlainReaderOnRandomFiles) {
    std::mt19937 random(77);
    const auto number = [&random] {
        static const char* const odd[] = {"-999.2500", "abc", "12abc", "1E3", "-.5",
                                          "7.",        "1d2", "0",     "--3", "123456789012345678901234567890",
                                          "NaN",       "1,5"};
        if (random() % 8 == 0) return std::string(odd[random() % std::size(odd)]);
        return formatMask((static_cast<double>(random() % 2000000) - 1000000) / 1000, static_cast<int>(random() % 6));
    };
    for (int round = 0; round < 600; ++round) {
        const int columns = 1 + static_cast<int>(random() % 6), lines = static_cast<int>(random() % 12);
        const bool wrapped = random() % 3 == 0;
        // Records that follow each other over the grid are read by several threads, up to the one that does not.
        const bool straight = random() % 2 == 0, upward = random() % 2 == 0;
        double depth = upward ? 99 : 107;
        app.run.workers = {1 + random() % 3, 1 + random() % 100};
        slot.wrap = wrapped ? "YES" : "NO";
        slot.linesPerStep = 3;
        PlainReader plain(100, 0.5, 10, columns);
        std::string bytes;
        for (int line = 0; line < lines; ++line) {
            depth += (upward ? 0.5 : -0.5) * static_cast<double>(1 + random() % 2);
            if (!straight || random() % 40 == 0) depth = 99 + (static_cast<double>(random() % 28)) / 4;
            std::string record = formatMask(depth, 4);
            std::string text = record;
            for (int field = 0; field < columns + (wrapped ? 0 : static_cast<int>(random() % 3) - 1); ++field) {
                const bool newLine = wrapped && (field == 0 || field == 2);
                const std::string value = number();
                text += (newLine ? "\r\n" : std::string(1 + random() % 3, random() % 5 == 0 ? '\t' : ' ')) + value;
                record += " " + value;
            }
            if (wrapped && columns <= 2) text += columns == 0 ? "\r\n1\r\n1" : "\r\n1";
            if (wrapped && columns <= 2) record += " 1";
            plain.store(record);
            bytes += text + (random() % 6 == 0 ? "\r" : "\r\n") + (random() % 6 == 0 ? "  \r\n" : "");
        }
        if (random() % 3 == 0 && bytes.size() > 2 && bytes.back() == '\n') bytes.resize(bytes.size() - 2);
        const Matrix matrix = read(bytes, columns, 10, 100, 0.5);
        for (int c = 0; c < columns; ++c)
            ASSERT_EQ(column(matrix, c), plain.matrix[static_cast<std::size_t>(c)]) << "round " << round << "\n"
                                                                                    << bytes;
    }
}

TEST_F(DataReaderTest, severalThreadsTellWhatOneTells) {
    slot.wrap = "NO";
    std::string bytes;
    for (int line = 1; line <= 50; ++line) bytes += (line == 40 ? "x" : std::to_string(line)) + std::string(" 7\r\n");
    for (const Workers workers : {Workers{1, 1U << 20U}, Workers{3, 20}}) {
        app.run.workers = workers;
        app.run.cancelRequested = false;
        FailureList failures;
        const Matrix matrix = read(bytes, 1, 60, 1, 1, nullptr, &failures);
        ASSERT_EQ(failures.count, 1U);
        EXPECT_EQ(failures.first[0].what, "data.las: line 40");
        const std::vector<double> values = column(matrix, 0);
        EXPECT_EQ(values[38], 7) << "what stands before the fault is read";
        EXPECT_EQ(std::count(values.begin(), values.end(), 7.0), 39);
        app.run.cancelRequested = true;
        ReadResult result{};
        read("1 7\r\n2 7\r\n3 7\r\n4 7\r\n5 7\r\n6 7\r\n", 1, 60, 1, 1, &result);
        EXPECT_EQ(result, ReadResult::Cancelled);
    }
}

TEST_F(DataReaderTest, linesGoToTheNearestSampleTiesToEven) {
    slot.wrap = "NO";
    // Grid 10, 11, 12, 13: half a step below the start ties to index 0, half a step up ties to the even index.
    EXPECT_EQ(column(read("9.5 1\r\n9.51 2\r\n", 1, 4, 10, 1), 0), (std::vector<double>{2, lasNull, lasNull, lasNull}));
    EXPECT_EQ(column(read("10.5 1\r\n11.5 2\r\n12.5 3\r\n", 1, 4, 10, 1), 0),
              (std::vector<double>{lasNull, 2, lasNull, 3}));
    EXPECT_EQ(column(read("10 1\r\n10.25 2\r\n10.25 3\r\n", 1, 4, 10, 1), 0)[0], 3) << "the last line on a sample wins";
}

TEST_F(DataReaderTest, aDepthThatIsNoNumberEndsTheReading) {
    slot.wrap = "NO";
    for (const char* depth : {"abc", "11x", "1e999", "~Other", "--"}) {
        ReadResult result{};
        FailureList failures;
        const Matrix matrix = read(std::string("10 1\r\n") + depth + " 2\r\n12 3\r\n", 1, 4, 10, 1, &result, &failures);
        EXPECT_EQ(column(matrix, 0), (std::vector<double>{1, lasNull, lasNull, lasNull})) << depth;
        EXPECT_EQ(result, ReadResult::NotDone) << depth;
        ASSERT_EQ(failures.count, 1U) << depth;
        EXPECT_EQ(failures.first[0].what, "data.las: line 2");
        EXPECT_NE(failures.first[0].why.find("reading ended"), std::string::npos) << failures.first[0].why;
    }
}

TEST_F(DataReaderTest, fixedWidthCutsByPosition) {
    slot.wrap = "NO";
    const Matrix matrix = read("   10  1.5-2.25\r\n   11   77\r\n   12\r\n", 2, 3, 10, 1, nullptr, nullptr, 5);
    EXPECT_EQ(column(matrix, 0), (std::vector<double>{1.5, 77, lasNull}));
    EXPECT_EQ(column(matrix, 1), (std::vector<double>{-2.25, lasNull, lasNull}));
    slot.wrap = "YES";
    slot.linesPerStep = 2;
    const Matrix wrapped = read("   10\r\n   1.5-2.25\r\n   11\r\n7.25\r\n", 2, 2, 10, 1, nullptr, nullptr, 5);
    EXPECT_EQ(column(wrapped, 0)[0], 1);
    EXPECT_EQ(column(wrapped, 1)[0], 5) << "\"5-2.2\": columns are cut through the joined lines";
    const Matrix missing = read("   10\r\n    1\r\n", 2, 1, 10, 1, nullptr, nullptr, 5);
    EXPECT_EQ(column(missing, 0)[0], 1);
    EXPECT_EQ(column(missing, 1)[0], 0) << "no null, unlike the field of a line that is not wrapped";
}

TEST_F(DataReaderTest, aWrappedRecordLosesWhatExceedsItsBuffer) {
    slot.wrap = "YES";
    slot.linesPerStep = 1;  // a buffer of 160 characters
    const std::string far = "10" + std::string(155, ' ') + "12345 6\r\n";
    const Matrix matrix = read(far, 2, 1, 10, 1);
    EXPECT_EQ(column(matrix, 0)[0], 123) << "the number is cut at the end of the buffer";
    EXPECT_EQ(column(matrix, 1)[0], 0);
    const Matrix blank = read(std::string(200, ' ') + "10 5\r\n", 2, 1, 10, 1);
    EXPECT_EQ(column(blank, 0)[0], lasNull) << "nothing of the record is left";
}

TEST_F(DataReaderTest, cancelEndsQuietly) {
    slot.wrap = "NO";
    app.run.cancelRequested = true;
    ReadResult result{};
    read("10 1\r\n", 1, 2, 10, 1, &result);
    EXPECT_EQ(result, ReadResult::Cancelled);
}

}  // namespace
}  // namespace welvane

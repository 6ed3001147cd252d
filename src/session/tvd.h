#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "platform/output_file.h"
#include "session/session.h"

/// True vertical depth: the survey table trd, its computation, its files, and the mapping of depths through it.
namespace welvane {

/// Columns of trd; a file may bring further ones.
enum class TrdColumn { Label = 0, Md, Tvd, Deviation, Azimuth };
/// Rows of trd: two heads, the tie point, then the survey. A survey row r of trd is row r - 2 of the inclinometry
/// table.
enum class TrdRow { Name = 0, Unit, Tie, FirstSurvey };
inline constexpr int tieRow = at(TrdRow::Tie);
inline constexpr int firstSurveyRow = at(TrdRow::FirstSurvey);

/// How the numbers of trd are read (the option uopt). Setting it converts nothing.
enum class SurveyUnit { Feet = 0, Metres = 1 };
SurveyUnit surveyUnit(const Table& trd);
/// Shows the option in the two unit cells.
void setSurveyUnit(Table& trd, SurveyUnit unit);

/// Heads, tie point of zeros and empty survey rows; the unit that the table had stays, feet at first.
void setupTVD(Table& trd);

/// Vertical increment of one survey step by the radius of curvature on the deviation alone (the two angles, in degrees,
/// are those of the two depths in the order given). Same unit as the depths.
double TVD_C(double md1, double md2, double dev1, double dev2);

/// Survey rows in order of measured depth, those without one behind, empty ones last; then the cells show what single
/// precision keeps of them. The inclinometry table is filled.
void sortGrd(Session& session);
/// Sorts, checks and fills the TVD column from the tie point down; also fills the inclinometry table. False when the
/// tie point is not complete.
bool buildTVDTable(Session& session, UserInterface& user);

/// trd into the inclinometry table (feet, single precision), each row with anything in it; clears the mark of a change.
void copyTrdToInclinometry(Session& session);
/// The inclinometry table into trd, in trd's unit with two decimals.
void copyInclinometryToTrd(Session& session);
/// What in trd would make depths that nobody measured: a text that reads as 0, a station without its depth or TVD.
struct SurveyFault {
    int row = 0, column = 0;
    std::string why;
};
/// The first text of MD, TVD and deviation that is no number.
std::optional<SurveyFault> noNumberIn(const Table& trd);
/// That, else the first station that has no measured depth or no TVD.
std::optional<SurveyFault> surveyFault(const Table& trd);
/// To be called before the inclinometry table is used: copies trd when it was changed since.
void updateInclinometry(Session& session);
/// Any edit of trd marks it as changed.
void markTrdChanged(Table& trd);
bool trdChanged(const Table& trd);

/// Puts clipboard text into the table from a cell on: lines are rows, tabs divide columns.
void pasteIntoTrd(Table& trd, int row, int column, std::string_view text);

/// True when the text file is a survey of the acquisition system: unit and tie point in the first line, -1 throughout
/// in the last. For whoever has to tell before reading; readTVDFile finds out by itself.
bool isTavirTVD(std::string_view path);
/// Fills trd from a survey of the acquisition system (and asks whether to compute it) or from a plain table, whose
/// columns are those of trd. False when the file cannot be read; trd then stands empty.
bool readTVDFile(std::string_view path, Session& session, UserInterface& user);
/// For people's own files: as readTVDFile, but a plain table may have a line of heads ("MD,INC,AZI" in any order),
/// comments and other lines, which are passed over; without heads two columns are MD and deviation, three MD, deviation
/// and azimuth, four or more those of trd. The first station is the tie point, at the TVD of its own column, else of
/// its measured depth. Computes without asking. False when no station was found.
/// Stations of a plain table are put in order of depth before the first becomes the tie point. `report` takes what the
/// file held.
struct SurveyReport {
    std::size_t stations = 0;     ///< the tie point among them
    std::size_t passedOver = 0;   ///< lines that are no station, no line of heads, no comment, no end mark
    std::string firstPassedOver;  ///< the first of them
    std::size_t repeated = 0;     ///< stations at the depth of the one above
    bool reordered = false;       ///< the file was not in order of depth
    bool tooMany = false;         ///< it held more stations than the table
    bool computed = false;        ///< false where the file names MD and TVD, but no deviation to compute from
};
bool readSurvey(std::string_view path, Session& session, UserInterface& user, SurveyReport* report = nullptr);
/// Writes trd from the tie point on: one row per line, columns divided by tabs; readTVDFile reads it back. False when
/// that failed.
bool saveTVDFile(std::string_view path, const Session& session, OutputFile::Mode mode = OutputFile::Mode::Beside);

/// One depth through the table, in feet: direction 0 maps measured to true vertical depth, any other the way back.
/// Outside the table the line through the two rows at its end goes on. Unchanged with fewer than two rows.
double mapDepth(const InclinometryTable& table, double depth, int direction);

/// The same for many depths through one table, which must not change meanwhile: where the depths of the table rise,
/// rows are found by halving.
class DepthMapper {
  public:
    DepthMapper(const InclinometryTable& table, int direction);
    double operator()(double depth) const;

  private:
    double source(std::size_t row) const;
    double target(std::size_t row) const;
    double onLine(std::size_t row, std::size_t other, double depth) const;
    double inside(double depth) const;

    const std::vector<SurveyRow>* rows_;
    bool toTvd_;
    bool rising_ = true;
};

}  // namespace welvane

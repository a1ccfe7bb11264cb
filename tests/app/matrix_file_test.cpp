// Matrices of times and wavelengths, with their axes in the file or stated beside it.
#include <gtest/gtest.h>

#include "app/formats/wavelength.h"
#include "tests/app/run_text.h"

namespace app {
namespace {

struct MatrixCase {
  const char* name;
  const char* text;
  const char* result;
  ReadOptions options = {};
};
class MatrixFile : public testing::TestWithParam<MatrixCase> {};
TEST_P(MatrixFile, Reads) {
  EXPECT_EQ(ReadText(GetParam().text, GetParam().options), GetParam().result);
}
const auto kName = [](const auto& c) { return c.param.name; };

constexpr const char* kTwoByThree = "200 nm| 0+6: 1 4; 202 nm| 0+6: 2 5; 204 nm| 0+6: 3 6";

INSTANTIATE_TEST_SUITE_P(
    Recognised, MatrixFile,
    testing::Values(
        MatrixCase{"HeaderRow", "min,200,202,204\n0,1,2,3\n0.1,4,5,6\n", kTwoByThree},
        MatrixCase{"Units", "Time (s)\t190.25nm\t191,5 nm\n0\t1\t2\n2\t3\t4\n",
                   "190.25 nm| 0+2: 1 3; 191.5 nm| 0+2: 2 4"},
        MatrixCase{"WavelengthsDown", "nm \\ min,0,0.1\n200,1,4\n202,2,5\n204,3,6\n", kTwoByThree},
        MatrixCase{"WavelengthsDownWithoutACorner", ";0;0,1\n200;1;4\n202;2;5\n204;3;6\n",
                   kTwoByThree},
        MatrixCase{"CornerWordDecides", "Wavelength,300,306\n200,1,4\n202,2,5\n204,3,6\n",
                   "200 nm| 300+6: 1 4; 202 nm| 300+6: 2 5; 204 nm| 300+6: 3 6"},
        MatrixCase{"LateTimesAreTimes", "Time (s),1,2\n300,1,4\n302,2,5\n304,3,6\n",
                   "1 nm| 300+2: 1 2 3; 2 nm| 300+2: 4 5 6"},
        MatrixCase{"NumberInTheCornerWavelengthsDown",
                   "0 0 .1 .2 .3\n400 1 2 3 4\n300 5 6 7 8\n200 9 1 2 3\n100 1 1 1 1\n",
                   "400 nm| 0+6: 1 2 3 4; 300 nm| 0+6: 5 6 7 8; 200 nm| 0+6: 9 1 2 3; "
                   "100 nm| 0+6: 1 1 1 1"},
        MatrixCase{"FewNumbersAreNoAxis", "0,200,201\n0.5,202,203\n1,204,205\n",
                   "| 0+30: 200 202 204; | 0+30: 201 203 205"}),
    kName);

const StatedAxis kNm{200, 204, std::nullopt};
const StatedAxis kNmBy2{200, 204, 2.0};
const StatedAxis kTimes{0, 6, std::nullopt};
const ReadOptions kBoth{.wavelengthsNm = kNm, .timesS = kTimes};

INSTANTIATE_TEST_SUITE_P(
    Stated, MatrixFile,
    testing::Values(
        MatrixCase{"Both", "1,2,3\n4,5,6\n", kTwoByThree, kBoth},
        MatrixCase{"TrailingSeparators", "1\t2\t3\t\n4\t5\t6\t\n", kTwoByThree, kBoth},
        MatrixCase{"BothWithWordsAbove", "intensity\na,b,c\n1,2,3\n4,5,6\n", kTwoByThree, kBoth},
        MatrixCase{"StepTellsTheDirection",
                   "1,4\n2,5\n3,6\n",
                   kTwoByThree,
                   {.wavelengthsNm = kNmBy2, .timesS = kTimes}},
        MatrixCase{"OnlyWavelengths",
                   "min,a,b,c\n0,1,2,3\n0.1,4,5,6\n",
                   kTwoByThree,
                   {.wavelengthsNm = kNm}},
        MatrixCase{"OnlyTimes", "200,202,204\n1,2,3\n4,5,6\n", kTwoByThree, {.timesS = kTimes}},
        MatrixCase{"OnlyTheDirection",
                   "x,150,156\n200,1,4\n202,2,5\n204,3,6\n",
                   "200 nm| 9000+360: 1 4; 202 nm| 9000+360: 2 5; 204 nm| 9000+360: 3 6",
                   {.timesIn = TimesIn::kColumns}}),
    kName);

INSTANTIATE_TEST_SUITE_P(
    Refused, MatrixFile,
    testing::Values(MatrixCase{"WrongCount",
                               "1,2,3,4\n5,6,7,8\n",
                               "run: holds 4 wavelengths, not the 3 from 200 to 204 by 2",
                               {.wavelengthsNm = kNmBy2, .timesS = kTimes}},
                    MatrixCase{"OddStep",
                               "1,2,3\n5,6,7\n",
                               "run: steps of 3 do not lead from 200 to 204",
                               {.wavelengthsNm = StatedAxis{200, 204, 3.0}, .timesS = kTimes}},
                    MatrixCase{"ShortRow", "1,2,3\n4,5\n6,7,8\n",
                               "run:2: expected 3 columns, found 2", kBoth},
                    MatrixCase{"Gap", "1,2,3\n4,,6\n", "run:2: column 2: no value", kBoth},
                    MatrixCase{"DamagedValue", "1,2,3\n4,5,6\n7,8x,9\n4,5,6\n",
                               "run:3: column 2: '8x' is not a number", kBoth},
                    MatrixCase{"TimesGoBack",
                               "nm,0,2,1\n200,1,2,3\n202,4,5,6\n",
                               "run: time 3, 1, lies before the one in front of it, 2",
                               {.timesIn = TimesIn::kColumns}},
                    MatrixCase{"NegativeWavelength",
                               "min,-200,-202\n0,1,2\n1,3,4\n",
                               "run: wavelength 1, -200, is not above 0",
                               {.timesIn = TimesIn::kRows}}),
    kName);

// Records hold 8 bytes, and the height map reads the number at their beginning.
TEST(Wavelength, FitsIntoARecord) {
  for (const auto& [nm, name] :
       {std::pair{250.4, "250.4 nm"}, {1000.125, "1000.125"}, {200.12345678, "200.1235"}}) {
    EXPECT_EQ(ShortWavelength(nm), name);
  }
}

}  // namespace
}  // namespace app

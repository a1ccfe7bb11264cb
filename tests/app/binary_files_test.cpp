// netCDF and mzML, made on the spot.
#include <gtest/gtest.h>
#include <netcdf.h>

#include <filesystem>
#include <random>

#include "app/formats/text.h"
#include "tests/app/run_text.h"

namespace app {
namespace {

class NetCdfFile {
 public:
  NetCdfFile() {
    path_ = (std::filesystem::temp_directory_path() /
             ("elugraph-" + std::to_string(std::random_device()()) + ".cdf"))
                .string();
    Check(nc_create(path_.c_str(), NC_CLOBBER, &id_));
  }
  void Attribute(const char* name, const std::string& text, const char* variable = nullptr) {
    int of = NC_GLOBAL;
    if (variable != nullptr) Check(nc_inq_varid(id_, variable, &of));
    Check(nc_put_att_text(id_, of, name, text.size(), text.data()));
  }
  // Without a dimension: one number.
  void Numbers(const char* name, const std::vector<double>& values,
               const char* dimension = nullptr) {
    Check(nc_redef(id_), NC_EINDEFINE);
    int dimensionId = 0;
    int id = 0;
    if (dimension != nullptr && nc_inq_dimid(id_, dimension, &dimensionId) != NC_NOERR) {
      Check(nc_def_dim(id_, dimension, values.size(), &dimensionId));
    }
    Check(nc_def_var(id_, name, NC_FLOAT, dimension != nullptr ? 1 : 0, &dimensionId, &id));
    Check(nc_enddef(id_));
    Check(nc_put_var_double(id_, id, values.data()));
    Check(nc_redef(id_));
  }
  void Texts(const char* name, const std::string& texts, std::size_t width) {
    int dimensions[2] = {};
    int id = 0;
    Check(nc_inq_dimid(id_, "peak_number", &dimensions[0]));
    Check(nc_def_dim(id_, "width", width, &dimensions[1]));
    Check(nc_def_var(id_, name, NC_CHAR, 2, dimensions, &id));
    Check(nc_enddef(id_));
    Check(nc_put_var_text(id_, id, texts.data()));
    Check(nc_redef(id_));
  }
  std::string Bytes() {
    Check(nc_enddef(id_));
    Check(nc_close(id_));
    std::string bytes = ReadBytes(path_);
    std::filesystem::remove(path_);
    return bytes;
  }

 private:
  static void Check(int status, int allowed = NC_NOERR) {
    ASSERT_TRUE(status == NC_NOERR || status == allowed) << nc_strerror(status);
  }
  std::string path_;
  int id_ = 0;
};

NetCdfFile Andi() {
  NetCdfFile file;
  file.Attribute("detector_unit", std::string("mAU\0", 4));
  file.Attribute("detector_name", "UV \xB5");
  file.Numbers("ordinate_values", {1, 5, 2, 1}, "point_number");
  file.Numbers("actual_delay_time", {2});
  file.Numbers("actual_sampling_interval", {0.5});
  return file;
}

TEST(AndiFile, DelayAndInterval) {
  EXPECT_EQ(ReadText(Andi().Bytes()), "UV \u00B5|mAU 2+0.5: 1 5 2 1");
  NetCdfFile minutes = Andi();
  minutes.Attribute("retention_unit", "Time in Minutes");
  EXPECT_EQ(ReadText(minutes.Bytes()), "UV \u00B5|mAU 120+30: 1 5 2 1");
}

TEST(AndiFile, ListOfTimesOnlyWhereTheFlagSaysSo) {
  for (const auto& [flag, value, irregular] : {std::tuple{"uniform_sampling_flag", "N", true},
                                               {"uniform_sampling_flag", "Y", false},
                                               {"non_uniform_sampling_flag", "Y", true}}) {
    NetCdfFile file = Andi();
    file.Attribute(flag, value, "ordinate_values");
    file.Numbers("raw_data_retention", {0, 1, 3, 3.5}, "point_number");
    EXPECT_EQ(ReadText(file.Bytes()),
              irregular ? "UV \u00B5|mAU t=0,1,3,3.5,: 1 5 2 1" : "UV \u00B5|mAU 2+0.5: 1 5 2 1")
        << flag << value;
  }
}

TEST(AndiFile, PeaksWithAndWithoutLimitsAndBaselines) {
  NetCdfFile file = Andi();
  file.Attribute("peak_amount_unit", "ppm");
  file.Numbers("peak_retention_time", {3, 2.5}, "peak_number");
  file.Numbers("peak_start_time", {2.6, 9.96921e36}, "peak_number");
  file.Numbers("peak_end_time", {3.4, 2.4}, "peak_number");
  file.Numbers("peak_amount", {0, 7}, "peak_number");
  file.Numbers("baseline_start_time", {2.5, 0}, "peak_number");
  file.Numbers("baseline_start_value", {1, 0}, "peak_number");
  file.Numbers("baseline_stop_time", {3.5, 0}, "peak_number");
  file.Numbers("baseline_stop_value", {2, 0}, "peak_number");
  file.Texts("peak_name", std::string("aa  b\0xx", 8), 4);
  EXPECT_EQ(ReadText(file.Bytes()),
            "UV \u00B5|mAU 2+0.5: 1 5 2 1; peak 0 b ?<2.5<? =7 ppm; "
            "peak 0 aa 2.6<3<3.4 base 1.1 1.9");
}

TEST(AndiFile, DamageIsRefused) {
  NetCdfFile noInterval;
  noInterval.Numbers("ordinate_values", {1, 5}, "point_number");
  EXPECT_EQ(ReadText(noInterval.Bytes()), "run: states no sampling interval above 0");
  NetCdfFile noValues;
  noValues.Attribute("detector_unit", "mAU");
  EXPECT_EQ(ReadText(noValues.Bytes()), "run: holds no chromatogram ('ordinate_values')");
  NetCdfFile fill;
  fill.Numbers("ordinate_values", {1, 9.96921e36}, "point_number");
  EXPECT_EQ(ReadText(fill.Bytes()), "run: value 2 is missing");
}

// Any file cut short or with random bytes in it is read or refused in one line.
void ExpectNoBreak(const std::string& good, int rounds) {
  std::mt19937 random(11);
  const auto pick = [&random](std::size_t count) {
    return std::uniform_int_distribution<std::size_t>(0, count - 1)(random);
  };
  int refused = 0;
  for (int round = 0; round < rounds; ++round) {
    std::string bytes = good.substr(0, pick(4) == 0 ? pick(good.size()) : good.size());
    for (std::size_t i = pick(4); i > 0 && !bytes.empty(); --i) {
      bytes[pick(bytes.size())] = static_cast<char>(pick(3) == 0 ? 0xFF : pick(256));
    }
    RunData run;
    std::string error;
    if (ReadRunBytes("run", bytes, {}, run, error)) {
      ASSERT_FALSE(run.channels.empty());
    } else {
      ++refused;
      ASSERT_TRUE(error.starts_with("run:") && error.find('\n') == error.npos) << error;
    }
  }
  EXPECT_GT(refused, rounds / 20);
}

TEST(AndiFile, DamagedBytesNeverBreakIt) {
  NetCdfFile file = Andi();
  file.Numbers("peak_retention_time", {3, 2.5}, "peak_number");
  file.Texts("peak_name", "aabb", 2);
  ExpectNoBreak(file.Bytes(), 3000);
}

// Base64 of three numbers each.
constexpr const char* kRising64 = "AAAAAAAA4L8AAAAAAADgPwAAAAAAAPg/";  // -0.5 0.5 1.5
constexpr const char* kDeflated32 = "eJxjYGiwZ2BQOMDA4OAAAAyDAiA=";    // 1 -2.5 3

std::string Array(const char* terms, const std::string& base64) {
  return std::string("<binaryDataArray>") + terms + "<binary>" + base64 +
         "</binary></binaryDataArray>";
}

constexpr const char* kTimes64 =
    "<cvParam accession='MS:1000595' unitName='minute'/><cvParam accession='MS:1000523'/>"
    "<cvParam accession='MS:1000576'/>";
constexpr const char* kValues32Packed =
    "<cvParam accession='MS:1000515' unitAccession='UO:0000269'/><cvParam accession='MS:1000521'/>"
    "<cvParam accession='MS:1000574'/>";

std::string Chromatogram(const char* id, const char* kind, int length, const std::string& arrays) {
  return std::string("<chromatogram id='") + id + "' defaultArrayLength='" +
         std::to_string(length) + "'><cvParam name='" + kind + "'/><binaryDataArrayList>" + arrays +
         "</binaryDataArrayList></chromatogram>";
}

std::string MzMl(const std::string& chromatograms) {
  return "<?xml version='1.0'?>\n<mzML><run><chromatogramList>\n" + chromatograms +
         "</chromatogramList></run></mzML>";
}

std::string GoodArrays() {
  return Array(kTimes64, kRising64) + Array(kValues32Packed, kDeflated32);
}

TEST(MzMl, PlainAndPackedArraysOfBothWidths) {
  EXPECT_EQ(ReadText(MzMl(Chromatogram("UV", "absorption chromatogram", 3, GoodArrays()) +
                          Chromatogram("P", "pressure chromatogram", 3, GoodArrays()))),
            "UV|AU -30+60: 1 -2.5 3; aux P|AU -30+60: 1 -2.5 3");
}

TEST(MzMl, DamageIsRefused) {
  const std::string good = GoodArrays();
  const auto read = [](int length, const std::string& arrays) {
    return ReadText(MzMl(Chromatogram("UV", "absorption chromatogram", length, arrays)));
  };
  EXPECT_EQ(read(4, good), "run: chromatogram 'UV': an array does not hold its 4 points");
  EXPECT_EQ(read(2'000'000'000, good), "run: chromatogram 'UV': more than 100000000 points");
  EXPECT_EQ(read(3, Array(kTimes64, kRising64)),
            "run: chromatogram 'UV': no array of times or none of values");
  EXPECT_EQ(ReadText(MzMl("")), "run: holds no chromatogram");
  EXPECT_EQ(read(1, Array(kTimes64, "$$$$") + Array(kValues32Packed, kDeflated32)),
            "run: chromatogram 'UV': an array is not base64");
  EXPECT_EQ(ReadText("<?xml version='1.0'?>\n<mzML>\n<run></mzML>"),
            "run:3: damaged XML: Start-end tags mismatch");
}

TEST(MzMl, DamagedBytesNeverBreakIt) {
  ExpectNoBreak(MzMl(Chromatogram("UV", "absorption chromatogram", 3, GoodArrays())), 3000);
}

}  // namespace
}  // namespace app

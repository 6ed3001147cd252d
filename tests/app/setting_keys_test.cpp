#include "app/setting_keys.h"

#include <gtest/gtest.h>
#include <string>

#include "shared/failure.h"

namespace welvane {
namespace {

TEST(SettingKeys, valuesAreKeptAsTheNextStartWouldTakeThem) {
    struct Case {
        const char *key, *value, *kept;  ///< kept nullptr: refused
    };
    for (const Case& row :
         {Case{"country", "canada", "Canada"}, Case{"country", "Norway", "Other"},
          Case{"FORMATDEF", "6|15|60|50|4|5", "6|15|60|50|13|5"}, Case{"formatdef", "6|x", nullptr},
          Case{"formatdef", "6|99999", nullptr}, Case{"poro_units", "v/v", "V/V"},
          Case{"poro_units", "percent", nullptr}, Case{"fillCVal", "yes", "1"}, Case{"fillCVal", "0", "0"},
          Case{"fillCVal", "x", nullptr}, Case{"renamedups", "no", "2"}, Case{"gridFontWidth", "Fit", "-1"},
          Case{"gridFontWidth", "0", "600"}, Case{"minPrice", "-1", nullptr}, Case{"minPrice", "99.50", "99.50"},
          Case{"log_prog", "two\nlines", nullptr},
          Case{"mdenDef", "0.5|2.4|2.71|2.87|54|47.6|43.5", "1.000|2.650|2.710|2.870|55.500|47.600|43.500"}}) {
        const SettingKey* const key = findSettingKey(row.key);
        ASSERT_NE(key, nullptr) << row.key;
        if (row.kept == nullptr) {
            EXPECT_THROW(key->corrected(row.value), RunTimeFailure) << row.key << " " << row.value;
        } else {
            EXPECT_EQ(key->corrected(row.value), row.kept) << row.key << " " << row.value;
        }
    }
    EXPECT_EQ(findSettingKey("nothing"), nullptr);
}

TEST(SettingKeys, defaultsStandAsTheyAre) {
    for (const SettingKey& key : settingKeys()) {
        if (key.defaultText.empty() || key.defaultText == "<program>") continue;
        EXPECT_EQ(key.corrected(key.defaultText), key.defaultText) << key.name;
    }
}

}  // namespace
}  // namespace welvane

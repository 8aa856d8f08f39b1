#include "app/preferences/pages/pages.h"

namespace ml::app {
namespace {

constexpr std::string_view kMonitor = "Monitor";
constexpr std::string_view kImages = "Images without a profile";
constexpr std::string_view kPrinter = "Printer";

constexpr Effects kEverything{Effect::RemakeThumbnails, Effect::ReloadPicture};
constexpr Need kManaged{"EnableMonitorProfile", true, "Counts only while colours are adapted to the monitor."};

constexpr PreferenceRow kRows[] = {
    {"EnableMonitorProfile", kMonitor, "&Adapt colours to the monitor",
     "Pictures and thumbnails are converted from the profile of the image to the profile of the monitor.", CheckField{},
     kEverything},
    {"MonitorProfile", kMonitor, "Monitor &profile:",
     "The file of the profile that describes your monitor. Without one the program takes the profile that the desktop "
     "has for the monitor, if there is one.",
     ProfileField{}, kEverything, kManaged},
    {"SuppressThumbnailCMS", kMonitor, "Leave &thumbnails as they are",
     "Thumbnails are made faster without the conversion of colours.", CheckField{}, Effects{Effect::RemakeThumbnails},
     kManaged},
    {"ReadProfileFromExif", kImages, "Go by the &colour space that the camera noted",
     "An image that carries no profile, but says that it is sRGB or AdobeRGB, is taken for that.", CheckField{},
     Effects{Effect::ReloadPicture}, kManaged},
    {"EnableDefaultProfile", kImages, "&Use a default profile",
     "An image of which nothing is known is taken to have this profile.", CheckField{}, kEverything, kManaged},
    {"DefaultProfile",
     kImages,
     "Defau&lt profile:",
     "The file of the profile.",
     ProfileField{},
     kEverything,
     {"EnableDefaultProfile", true, "Counts only while a default profile is used."}},
    {"EnablePrinterProfile", kPrinter, "Show the colours of the p&rinter in print preview",
     "The preview shows which colours the printer can print.", CheckField{}},
    {"PrinterProfile",
     kPrinter,
     "Pri&nter profile:",
     "The file of the profile that describes printer and paper.",
     ProfileField{},
     {},
     {"EnablePrinterProfile", true, "Counts only while the preview shows the printer's colours."}},
};

}  // namespace

std::span<const PreferenceRow> ColourRows() { return kRows; }

}  // namespace ml::app

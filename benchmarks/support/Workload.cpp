#include "Workload.h"

#include <Utils/Public/Utf8.h>

#include <algorithm>

namespace Vell::Benchmarks {

namespace {

constexpr const char* dejaVu = "/usr/share/fonts/truetype/dejavu/DejaVuSans.ttf";
constexpr const char* notoCjk = "/usr/share/fonts/opentype/noto/NotoSansCJK-Regular.ttc";
constexpr const char* liberationSerif = "/usr/share/fonts/truetype/liberation/LiberationSerif-Regular.ttf";
constexpr const char* liberationMono = "/usr/share/fonts/truetype/liberation/LiberationMono-Regular.ttf";

constexpr const char* dejaVuFamily = "DejaVu Sans";
constexpr const char* notoCjkFamily = "Noto Sans CJK JP";

} // namespace

std::vector<unsigned int> decode(const std::string& text) {
    std::vector<unsigned int> codes;
    const char* position = text.data();
    while (position != text.data() + text.size()) {
        codes.push_back(decodeUtf8(position, text.data() + text.size()));
    }
    return codes;
}

std::size_t Workload::countCharacters() const {
    std::size_t count = 0;
    for (const std::string& line : lines) {
        count += decode(line).size();
    }
    return count;
}

bool Workload::hasUnderscores() const {
    return std::any_of(lines.begin(), lines.end(),
                       [](const std::string& line) { return line.find('_') != std::string::npos; });
}

const Workload& getEnglish() {
    static const Workload workload{
        "E",
        dejaVu,
        dejaVuFamily,
        {"The harbour woke before the town did: first the gulls, then the winches, then the men who",
         "shouted over both. By six the nets lay in grey heaps along the quay, and somebody had set",
         "a kettle on the stove of the smallest boat. Nobody asked whose turn it was to pour. Tea,",
         "said the skipper, belongs to whoever stands closest; so the boy stood close and learned",
         "to hold two cups in one hand. (He also learned that a wet rope is twice as heavy, that 15",
         "knots is plenty, and that \"soon\" means after lunch.) When the fog lifted, the lighthouse",
         "looked nearer than it had any right to, as if the night had quietly rowed it a mile inland."}};
    return workload;
}

const Workload& getMixed() {
    static const Workload workload{
        "M",
        dejaVu,
        dejaVuFamily,
        {"Утром снег скрипел под ногами, и почтальон шёл медленно, читая адреса вслух.",
         "Το πλοίο έφυγε νωρίς, πριν ανοίξουν τα καφενεία στο λιμάνι της μικρής πόλης.",
         "Grüße aus Köln: à bientôt, señor; dzień dobry, příště víc, até já, çok güzel!",
         "Кошка спала на подоконнике, а за окном гудели трамваи и шумел старый тополь.",
         "Ο γέρος ψαράς μετρούσε τα κύματα και έλεγε ότι το έβδομο είναι πάντα ψηλότερο.",
         "Smørrebrød, naïve œuvre, fjörður, łódź, žluťoučký kůň, tükörfúrógép, Ærø."}};
    return workload;
}

const Workload& getLabels() {
    static const Workload workload{
        "L",
        dejaVu,
        dejaVuFamily,
        {"File",    "Edit",   "View",    "Insert", "Format",  "Tools",   "Window",  "Help",   "New",
         "Open",    "Save",   "Save as", "Print",  "Close",   "Quit",    "Undo",    "Redo",   "Cut",
         "Copy",    "Paste",  "Delete",  "Find",   "Replace", "Go to",   "Zoom in", "100 %",  "125 %",
         "150 %",   "200 %",  "Fit",     "Rows",   "Columns", "Sum",     "Mean",    "Median", "Min",
         "Max",     "Count",  "Name",    "Size",   "Type",    "Date",    "Owner",   "12 KB",  "3.4 MB",
         "1.2 GB",  "Jan 04", "Feb 17",  "Mar 29", "Apr 30",  "09:15",   "10:42",   "17:03",  "OK",
         "Cancel",  "Apply",  "Yes",     "No",     "Retry",   "Ignore",  "x = 120", "y = 48", "w = 640",
         "h = 90",  "Left",   "Right",   "Top",    "Bottom",  "Center",  "Fill",    "Bold",   "Italic",
         "Regular", "Black",  "White",   "Red",    "Layer 1", "Layer 2", "Layer 3", "Group"}};
    return workload;
}

const Workload& getCjk() {
    static const Workload workload{
        "CJK",
        notoCjk,
        notoCjkFamily,
        {"清晨的港口还很安静，只有海鸥在桅杆上叫。老船长把茶壶放在炉子上，看着雾慢慢散开。",
         "少年站在他身边，学会了一只手拿两个杯子，也学会了湿绳子比干绳子重一倍。",
         "朝の港はまだ静かで、かもめの声だけが聞こえた。老いた船長はやかんを火にかけ、霧が晴れるのを待った。",
         "少年はそばに立ち、濡れた綱は二倍も重いこと、そして「もうすぐ」とは昼飯のあとだということを覚えた。",
         "灯塔看起来比昨天更近，好像夜里有人悄悄把它划进了海湾。"}};
    return workload;
}

const Workload& getForm() {
    static const Workload workload{"form",
                                   dejaVu,
                                   dejaVuFamily,
                                   {"Name ________________________________  Date of birth ____________",
                                    "Street ___________________________________________  No. ________",
                                    "Town ____________________________________  Postcode ____________",
                                    "________________________________________________________________",
                                    "Signature ___________________________  Place, date _____________"}};
    return workload;
}

const Workload& getProse() {
    static const Workload workload{
        "prose",
        liberationSerif,
        "Liberation Serif",
        {"My grandmother kept bees, though she was afraid of them. \u201cOne should be,\u201d she said, and "
         "drew",
         "the veil down over her hat; \u201cit keeps the hands slow.\u201d There were eleven hives behind "
         "the orchard,",
         "painted in whatever colour the shop had left over: ochre, pale green, a blue that had been meant",
         "for window frames. In May they hummed like a church before the sermon. In October she weighed",
         "each one by lifting a corner, nodded or shook her head, and wrote a figure into the same brown",
         "notebook that held birthdays, recipes and the price of coal since 1931. Nobody was allowed to",
         "tidy it. When I asked her what the figures were for, she thought about it for most of an",
         "afternoon. \u201cSo that next year,\u201d she said at last, \u201cI can be surprised "
         "properly.\u201d"},
        17.0F};
    return workload;
}

const Workload& getCode() {
    static const Workload workload{
        "code",
        liberationMono,
        "Liberation Mono",
        {"def read_tide_table(file_name, harbour_id, max_rows=MAX_ROWS):",
         "    \"\"\"Yields (time_of_day, height_in_cm) for each high_tide of a harbour.\"\"\"",
         "    with open(file_name, encoding=\"utf-8\") as tide_file:",
         "        for row_number, raw_line in enumerate(tide_file):",
         "            if row_number >= max_rows or raw_line.startswith(\"#\"):", "                continue",
         "            time_of_day, height_in_cm, *other_columns = raw_line.split(\";\")",
         "            if other_columns[HARBOUR_COLUMN] == harbour_id:",
         "                yield parse_time(time_of_day), int(height_in_cm) - CHART_DATUM[harbour_id]", "",
         "if __name__ == \"__main__\":",
         "    sys.exit(main(sys.argv[1:], is_verbose=bool(os.environ.get(\"TIDE_DEBUG\"))))"},
        13.0F,
        {0, 84, 166, 255}};
    return workload;
}

std::vector<const Workload*> getWorkloads() {
    return {&getEnglish(), &getMixed(), &getLabels(), &getCjk(), &getProse(), &getForm(), &getCode()};
}

} // namespace Vell::Benchmarks

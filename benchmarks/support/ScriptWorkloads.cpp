// Texts in scripts whose letters must be shaped.

#include "Workload.h"

namespace Vell::Benchmarks {

namespace {

constexpr const char* notoNaskh = "/usr/share/fonts/truetype/noto/NotoNaskhArabic-Regular.ttf";
constexpr const char* notoDevanagari = "/usr/share/fonts/truetype/noto/NotoSansDevanagari-Regular.ttf";
constexpr const char* notoThai = "/usr/share/fonts/truetype/noto/NotoSansThai-Regular.ttf";

} // namespace

const Workload& getArabic() {
    static const Workload workload{
        "Arabic",
        notoNaskh,
        "Noto Naskh Arabic",
        {"استيقظ الميناء قبل المدينة، أولاً النوارس ثم الرافعات ثم الرجال الذين صاحوا فوق الجميع.",
         "في السادسة كانت الشباك أكواماً رمادية على الرصيف، ووضع أحدهم إبريقاً على موقد أصغر قارب.",
         "وقف الصبي قرب القبطان وتعلم أن يحمل فنجانين بيد واحدة، وأن الحبل المبلل أثقل مرتين.",
         "وحين انقشع الضباب بدت المنارة أقرب مما ينبغي، كأن الليل جذّف بها ميلاً نحو البر."}};
    return workload;
}

const Workload& getDevanagari() {
    static const Workload workload{
        "Devanagari",
        notoDevanagari,
        "Noto Sans Devanagari",
        {"बंदरगाह शहर से पहले जाग गया: पहले समुद्री पक्षी, फिर चरखियाँ, फिर वे लोग जो सब पर चिल्लाते थे।",
         "छह बजे तक जाल घाट पर धूसर ढेरों में पड़े थे, और किसी ने सबसे छोटी नाव के चूल्हे पर केतली रख दी।",
         "लड़का कप्तान के पास खड़ा रहा और एक हाथ में दो प्याले पकड़ना सीख गया।",
         "जब कोहरा छँटा तो प्रकाशस्तंभ इतना निकट दिखा मानो रात ने उसे चुपचाप खे कर ला दिया हो।"}};
    return workload;
}

const Workload& getThai() {
    static const Workload workload{"Thai",
                                   notoThai,
                                   "Noto Sans Thai",
                                   {"ท่าเรือตื่นก่อนเมืองเสมอ เริ่มจากนกนางนวล แล้วก็กว้าน แล้วก็ผู้ชายที่ตะโกนแข่งกับทั้งสองอย่าง",
                                    "หกโมงเช้าอวนก็กองเป็นสีเทาอยู่ริมท่า และมีคนตั้งกาน้ำไว้บนเตาของเรือลำเล็กที่สุด",
                                    "เด็กชายยืนใกล้กัปตันและเรียนรู้ที่จะถือถ้วยสองใบด้วยมือเดียว",
                                    "เมื่อหมอกจางลง ประภาคารดูใกล้กว่าที่ควร ราวกับกลางคืนได้พายมันเข้าฝั่งมาเงียบๆ"}};
    return workload;
}

std::vector<const Workload*> getShapedWorkloads() {
    return {&getEnglish(), &getMixed(), &getLabels(), &getCjk(), &getArabic(), &getDevanagari(), &getThai()};
}

} // namespace Vell::Benchmarks

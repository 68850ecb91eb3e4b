#pragma once

namespace Vell::Testing {

/// A text of a script, and an installed font that has it.
struct ScriptSample {
    const char* script; ///< ISO 15924
    const char* file;   ///< below /usr/share/fonts
    const char* text;
    const char* features; ///< to shape the text with as well as without
    const char* language; ///< the same; a language that the font has forms for, if it has any
};

constexpr ScriptSample scriptSamples[] = {
    {"Latn", "truetype/dejavu/DejaVuSans.ttf",
     "AVATAR To fi ffl office (1/2) e\u0301 a\u0323\u0302 \u01C6 \u017F\u0074 Stra\u00DFe \u201EWe\u201C",
     "-kern,-liga,dlig,salt", "ro"},
    {"Latn", "truetype/noto/NotoSerif-Italic.ttf",
     "Affluent Waffles fjord x\u0327\u0301 \u0218i 3/4 \u1EA4 i\u0307 V.A.T. \u2018tis\u2019",
     "smcp,onum,frac,-kern", "ro"},
    {"Latn", "truetype/liberation/LiberationSerif-Regular.ttf", "Typography fi fl AV, To. \u00C5ngstr\u00F6m",
     "-liga,-kern", "tr"},
    {"Grek", "truetype/noto/NotoSans-Regular.ttf",
     "\u038C\u03BB\u03BF\u03B9 \u03BF\u03B9 \u03AC\u03BD\u03B8\u03C1\u03C9\u03C0\u03BF\u03B9 "
     "\u1F00\u03C1\u03C7\u1F74 \u03B1\u0313\u0301 \u0391\u03A5",
     "-kern,-mark", "el-polyton"},
    {"Cyrl", "truetype/noto/NotoSans-Regular.ttf",
     "\u0412\u0441\u0435 \u043B\u044E\u0434\u0438 \u0440\u043E\u0436\u0434\u0430\u044E\u0442\u0441\u044F "
     "\u0441\u0432\u043E\u0431\u043E\u0434\u043D\u044B\u043C\u0438 \u0433\u0438\u0301 "
     "\u0442\u043F\u0434\u0431",
     "-kern,ss01", "sr"},
    {"Armn", "truetype/noto/NotoSansArmenian-Regular.ttf",
     "\u0532\u0578\u056C\u0578\u0580 \u0574\u0561\u0580\u0564\u056B\u056F "
     "\u056E\u0576\u057E\u0578\u0582\u0574 "
     "\u0565\u0576 \u0574\u0576 \u0574\u056D \u0574\u0565",
     "-liga,dlig", "hy"},
    {"Geor", "truetype/noto/NotoSansGeorgian-Regular.ttf",
     "\u10E7\u10D5\u10D4\u10DA\u10D0 \u10D0\u10D3\u10D0\u10DB\u10D8\u10D0\u10DC\u10D8 "
     "\u1C90\u1C91\u1C92 \u10D8\u10D1\u10D0\u10D3\u10D4\u10D1\u10D0",
     "-kern,case", "ka"},
    {"Hebr", "truetype/noto/NotoSansHebrew-Regular.ttf",
     "\u05DB\u05DC \u05D1\u05E0\u05D9 \u05D4\u05D0\u05D3\u05DD \u05E9\u05C1\u05B8\u05DC\u05D5\u05B9\u05DD "
     "123 "
     "\u05D0\u05B7\u05BC \u05D5\u05BC",
     "-mark,-ccmp", "yi"},
    {"Arab", "truetype/noto/NotoNaskhArabic-Regular.ttf",
     "\u064A\u0648\u0644\u062F \u062C\u0645\u064A\u0639 \u0627\u0644\u0646\u0627\u0633 "
     "\u0645\u064F\u062D\u064E\u0645\u0651\u064E\u062F \u0644\u0627 \u0627\u0644\u0644\u0647 "
     "\u0661\u0662\u0663 \u0628\u0640\u0640\u0628 \u0628\u200D \u0628\u200C\u0628",
     "-liga,-rlig,-calt", "ur"},
    {"Arab", "truetype/noto/NotoSansArabic-Regular.ttf",
     "\u0643\u062A\u0627\u0628 \u0627\u0644\u0644\u0651\u064E\u0647 \u0644\u0644\u0623 "
     "\u0633\u0645\u0627\u0621 "
     "(\u0628\u064A\u062A) \u06A9\u06AF\u0686\u067E",
     "-init,-medi,-fina", "sd"},
    {"Arab", "truetype/noto/NotoNastaliqUrdu-Regular.ttf",
     "\u062A\u0645\u0627\u0645 \u0627\u0646\u0633\u0627\u0646 \u0622\u0632\u0627\u062F \u0627\u0648\u0631 "
     "\u062D\u0642\u0648\u0642 \u0639\u0632\u062A \u06A9\u06D2 \u0627\u0639\u062A\u0628\u0627\u0631 "
     "\u067E\u06CC\u062F\u0627",
     "-calt,-mark", "ur"},
    {"Syrc", "truetype/noto/NotoSansSyriac-Regular.ttf",
     "\u071F\u0720 \u0712\u072A\u0722\u072B\u0710 \u0712\u072A\u071D\u0720\u0717 \u071A\u0710\u072A\u0710 "
     "\u072B\u073C\u0720\u0733\u0721\u0710",
     "-fin2,-mark", "syr"},
    {"Thaa", "truetype/noto/NotoSansThaana-Regular.ttf",
     "\u0780\u07AA\u0783\u07A8\u0780\u07A7 \u0787\u07A8\u0782\u07B0\u0790\u07A7\u0782\u07AA\u0782\u07B0 "
     "\u0789\u07A8\u0782\u07A8\u0788\u07A6\u0782\u07B0",
     "-mark,-kern", "dv"},
    {"Nkoo", "truetype/noto/NotoSansNKo-Regular.ttf",
     "\u07D2\u07DE\u07CF \u07D3\u07CA\u07DE\u07D0\u07F2 \u07DF\u07CA\u07EC\u07D3\u07CE\u07F2 \u07C1\u07C2",
     "-medi,-mark", "nqo"},
    {"Deva", "truetype/noto/NotoSansDevanagari-Regular.ttf",
     "\u0938\u092D\u0940 \u092E\u0928\u0941\u0937\u094D\u092F\u094B\u0902 \u0915\u094B "
     "\u0915\u094D\u0937\u0924\u094D\u0930\u093F\u092F \u0930\u094D\u0915\u093F \u0924\u094D\u200D\u0930 "
     "\u0915\u094D\u200C\u0937 \u0930\u094D\u200D\u0915 \u0967\u0968 \u0964",
     "-half,-rphf,-akhn", "mr"},
    {"Beng", "truetype/noto/NotoSansBengali-Regular.ttf",
     "\u09B8\u09AE\u09B8\u09CD\u09A4 \u09AE\u09BE\u09A8\u09C1\u09B7 "
     "\u09B8\u09CD\u09AC\u09BE\u09A7\u09C0\u09A8"
     "\u09AD\u09BE\u09AC\u09C7 \u0995\u09CD\u09B7\u09CB \u09B0\u09CD\u09AF \u09B0\u200D\u09CD\u09AF "
     "\u0995\u09CC",
     "-init,-half", "as"},
    {"Guru", "truetype/noto/NotoSansGurmukhi-Regular.ttf",
     "\u0A38\u0A3E\u0A30\u0A3E \u0A2E\u0A28\u0A41\u0A71\u0A16\u0A40 \u0A2A\u0A30\u0A3F\u0A35\u0A3E\u0A30 "
     "\u0A36\u0A4D\u0A30\u0A40 \u0A38\u0A4D\u0A35 \u0A05\u0A24\u0A47",
     "-blwf,-pstf", "pa"},
    {"Gujr", "truetype/noto/NotoSansGujarati-Regular.ttf",
     "\u0AAA\u0ACD\u0AB0\u0AA4\u0ABF\u0AB7\u0ACD\u0AA0\u0ABE \u0A85\u0AA8\u0AC7 "
     "\u0AA6\u0AC3\u0AB7\u0ACD\u0A9F\u0ABF\u0A8F \u0AB8\u0AB0\u0ACD\u0AB5 \u0A95\u0ACD\u0AB7 "
     "\u0AB6\u0ACD\u0AB0\u0AC0",
     "-half,-rphf", "gu"},
    {"Orya", "truetype/noto/NotoSansOriya-Regular.ttf",
     "\u0B38\u0B2C\u0B41 \u0B2E\u0B28\u0B41\u0B37\u0B4D\u0B5F \u0B38\u0B4D\u0B71\u0B3E\u0B27\u0B40\u0B28 "
     "\u0B15\u0B4D\u0B37\u0B4C \u0B30\u0B4D\u0B15\u0B4B",
     "-blwf,-abvs", "or"},
    {"Taml", "truetype/noto/NotoSansTamil-Regular.ttf",
     "\u0BAE\u0BA9\u0BBF\u0BA4\u0BAA\u0BCD \u0BAA\u0BBF\u0BB1\u0BBF\u0BB5\u0BBF \u0BB8\u0BCD\u0BB0\u0BC0 "
     "\u0B95\u0BCA\u0BB3\u0BCD\u0BB3\u0BC8 \u0B95\u0BCC \u0B95\u0BCD\u0BB7",
     "-akhn,-pres", "ta"},
    {"Telu", "truetype/noto/NotoSansTelugu-Regular.ttf",
     "\u0C2A\u0C4D\u0C30\u0C24\u0C3F\u0C2A\u0C24\u0C4D\u0C24\u0C3F \u0C38\u0C4D\u0C35\u0C24\u0C4D\u0C35 "
     "\u0C15\u0C4D\u0C37\u0C4D\u0C30\u0C48 \u0C30\u0C4D\u200D\u0C15 \u0C36\u0C4D\u0C30\u0C40",
     "-blwf,-psts", "te"},
    {"Knda", "truetype/noto/NotoSansKannada-Regular.ttf",
     "\u0C8E\u0CB2\u0CCD\u0CB2\u0CBE \u0CAE\u0CBE\u0CA8\u0CB5\u0CB0\u0CC2 "
     "\u0CB8\u0CCD\u0CB5\u0CA4\u0C82\u0CA4\u0CCD\u0CB0 "
     "\u0C95\u0CCB \u0CB0\u0CCD\u0C95 \u0C95\u0CCD\u0CB7\u0CCC",
     "-blwf,-rphf", "kn"},
    {"Mlym", "truetype/noto/NotoSansMalayalam-Regular.ttf",
     "\u0D2E\u0D28\u0D41\u0D37\u0D4D\u0D2F\u0D30\u0D46\u0D32\u0D4D\u0D32\u0D3E\u0D35\u0D30\u0D41\u0D02 "
     "\u0D05\u0D28\u0D4D\u0D24\u0D38\u0D4D\u0D38\u0D4D \u0D15\u0D4D\u0D30\u0D4B \u0D28\u0D4D\u200D "
     "\u0D4E\u0D15",
     "-akhn,-pstf", "ml"},
    {"Sinh", "truetype/noto/NotoSansSinhala-Regular.ttf",
     "\u0DC3\u0DD2\u0DBA\u0DBD\u0DD4 \u0DB8\u0DB1\u0DD4\u0DC2\u0DCA\u200D\u0DBA\u0DBA\u0DDD "
     "\u0DC1\u0DCA\u200D\u0DBB\u0DD3 \u0D9A\u0DDC",
     "-rphf,-vatu", "si"},
    {"Thai", "truetype/noto/NotoSansThai-Regular.ttf",
     "\u0E21\u0E19\u0E38\u0E29\u0E22\u0E4C \u0E17\u0E31\u0E49\u0E07\u0E2B\u0E25\u0E32\u0E22 "
     "\u0E19\u0E49\u0E33 "
     "\u0E1B\u0E35\u0E48 \u0E0D\u0E39 \u0E40\u0E01\u0E34\u0E14",
     "-mark,-mkmk", "th"},
    {"Laoo", "truetype/noto/NotoSansLao-Regular.ttf",
     "\u0EA1\u0EB0\u0E99\u0EB8\u0E94 \u0E97\u0EB8\u0E81\u0E84\u0EBB\u0E99 \u0E99\u0EC9\u0EB3 "
     "\u0E9B\u0EB5\u0EC8",
     "-mark,-mkmk", "lo"},
    {"Tibt", "truetype/noto/NotoSerifTibetan-Regular.ttf",
     "\u0F60\u0F42\u0FB2\u0F7C\u0F0B\u0F56\u0F0B\u0F58\u0F72\u0F60\u0F72\u0F0B\u0F62\u0F72\u0F42\u0F66\u0F0D "
     "\u0F66\u0F90\u0FB1\u0F7A\u0F66\u0F0B \u0F68\u0F7C\u0F7E",
     "-blws,-mark", "bo"},
    {"Mymr", "truetype/noto/NotoSansMyanmar-Regular.ttf",
     "\u101C\u1030\u1010\u102D\u102F\u1004\u103A\u1038 \u1002\u102F\u100F\u103A "
     "\u101E\u102D\u1000\u1039\u1001\u102C \u1000\u103C\u103D\u1000\u103A \u1004\u103A\u1039\u1000",
     "-rphf,-blwf", "my"},
    {"Khmr", "truetype/noto/NotoSansKhmer-Regular.ttf",
     "\u1798\u1793\u17BB\u179F\u17D2\u179F \u1791\u17B6\u17C6\u1784\u17A2\u179F\u17CB "
     "\u1780\u17D2\u179A\u17C4 "
     "\u179F\u17D2\u178F\u17D2\u179A\u17B8 \u1795\u17D2\u1793\u17C2\u1780",
     "-pref,-blwf", "km"},
    {"Mong", "truetype/noto/NotoSansMongolian-Regular.ttf",
     "\u182C\u1826\u182E\u1826\u1828 \u182A\u1826\u1837 \u1832\u1825\u1837\u1825\u1835\u1826 "
     "\u1821\u1837\u182C\u1821\u202F\u1836\u1822\u1828 \u1828\u180E\u1820 \u182D\u180B",
     "-calt,-rlig", "mn"},
    {"Ethi", "truetype/noto/NotoSansEthiopic-Regular.ttf",
     "\u12E8\u1230\u12CD \u120D\u1305 \u1201\u1209 \u1232\u12C8\u1208\u12F5 \u1293\u12CD\u1362 \u1369\u1370",
     "-ccmp,-kern", "am"},
    {"Cher", "truetype/noto/NotoSansCherokee-Regular.ttf",
     "\u13C2\u13A6\u13D3 \u13A0\u13C2\u13F4\u13EB \uAB70\uAB71\u13A0 \u13C2\u13A8\u13AB\u13D3\u13B8", "-kern",
     "chr"},
    {"Cans", "truetype/noto/NotoSansCanadianAboriginal-Regular.ttf",
     "\u1403\u14C5\u152A\u14D5\u14EA\u1466 \u140A\u14C2\u1585\u144E\u1546 \u1403\u14C4\u14D5", "-kern,ss01",
     "iu"},
    {"Hani", "opentype/noto/NotoSansCJK-Regular.ttc",
     "\u4EBA\u4EBA\u751F\u800C\u81EA\u7531\uFF0C\u5728 \u5C0A\u4E25\uFF08\u548C\uFF09\u6743\u5229\u3002 "
     "\u9AA8\u76F4\u8FD4",
     "palt,-kern", "zh-Hans"},
    {"Hira", "opentype/noto/NotoSansCJK-Regular.ttc",
     "\u3059\u3079\u3066\u306E\u3001\u4EBA\u9593\u306F "
     "\u300C\u30AC\u30AB\u3099\u300D\u30FC\u3071\u3072\u3099 "
     "\u3042\u3099",
     "palt,hwid,-liga", "ja"},
    {"Hang", "opentype/noto/NotoSerifCJK-Regular.ttc",
     "\uBAA8\uB4E0 \uC778\uAC04\uC740 \u1112\u1161\u11AB\u1100\u1173\u11AF \u1112\u119E\u11AB \uD55C\uAE00",
     "-ljmo,-vjmo", "ko"},
    {"Adlm", "truetype/noto/NotoSansAdlam-Regular.ttf",
     "\U0001E90B\U0001E932\U0001E946\U0001E922\U0001E925 \U0001E922\U0001E923\U0001E922\U0001E925 "
     "\U0001E928\U0001E92E\U0001E93C\U0001E951",
     "-init,-medi,-fina", "ff"},
    {"Java", "truetype/noto/NotoSansJavanese-Regular.ttf",
     "\uA9B1\uA9A7\uA9BC\uA9A4\uA9C0\uA9AE\uA9BA\uA9B4 \uA981\uA98F\uA9AD\uA9B6\uA9AF \uA98F\uA9BF\uA9B4",
     "-blws,-pref", "jv"},
    {"Bali", "truetype/noto/NotoSansBalinese-Regular.ttf",
     "\u1B32\u1B2B\u1B36\u1B33 \u1B2B\u1B26\u1B38\u1B32 \u1B13\u1B44\u1B2D\u1B3E \u1B04\u1B13", "-blwf,-mark",
     "ban"},
    {"Lana", "truetype/noto/NotoSansTaiTham-Regular.ttf",
     "\u1A20\u1A60\u1A3F\u1A6E \u1A3E\u1A63\u1A60\u1A36 \u1A39\u1A6C\u1A60\u1A3E \u1A32\u1A74", "-blwf,-mark",
     "nod"},
    {"Tfng", "truetype/noto/NotoSansTifinagh-Regular.ttf",
     "\u2D49\u2D4E\u2D37\u2D30\u2D4F\u2D3B\u2D4F \u2D30\u2D3D\u2D7F\u2D3D \u2D4E\u2D30", "-ccmp,-mark",
     "zgh"},
    {"Beng", "truetype/noto/NotoSerifBengali-Regular.ttf",
     "\u09AC\u09BE\u0982\u09B2\u09BE \u09AF\u09C1\u0995\u09CD\u09A4\u09BE\u0995\u09CD\u09B7\u09B0 "
     "\u0995\u09BF",
     "-pres,-blws", "bn"},
    {"Mand", "truetype/noto/NotoSansMandaic-Regular.ttf",
     "\u0841\u0842\u0843 \u0850\u0852\u0844\u0840 \u0854\u0855\u0859 \u0841\u085A", "-fina,-mark", "mid"},
    {"Phag", "truetype/noto/NotoSansPhagsPa-Regular.ttf",
     "\uA840\uA841\uA853 \uA85E\uA864\uA861 \uA840\uA866\uA843\uA871 \uA85A\uA865\uFE00", "-medi,-rlig",
     "mn"},
    {"Rohg", "truetype/noto/NotoSansHanifiRohingya-Regular.ttf",
     "\U00010D00\U00010D1D\U00010D01\U00010D1E \U00010D02\U00010D24\U00010D1D \U00010D0F\U00010D20",
     "-init,-mark", "rhg"},
    {"Yiii", "truetype/noto/NotoSansYi-Regular.ttf", "\uA000\uA001\uA002 \uA490\uA4A1 \uA015\uA00A", "-kern",
     "ii"},
};

} // namespace Vell::Testing

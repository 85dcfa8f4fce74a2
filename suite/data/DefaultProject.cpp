// The catalogue every new project starts from: specialities, floors with their laying modes,
// categories and attributes, system codes, the command table and the layers.

#include <cstdint>
#include <map>
#include <string>

#include "host/Assert.h"
#include "suite/data/ProjectDb.h"

namespace kelaz {

namespace {

struct SpecDef {
    const wchar_t* name;
    const wchar_t* title;
};

constexpr SpecDef kSpecs[] = {
    {L"暖通", L"暖通空调"}, {L"给排水", L"给水排水"},     {L"消防", L"消防水"},
    {L"电气", L"电气"},     {L"1_5u", L"电气(1_5u编码)"},
};

// Rectangular sections are "B,w,H,h" under shape code 520, round ones "B,d" under 521.
struct MemberDef {
    const wchar_t* path;  // speciality\big category\small category\member
    int sectionType;
    const wchar_t* kind;
    const wchar_t* shapeCode;
    const wchar_t* size;
    const wchar_t* upHeight;  // system mounting height, null when the category has none
};

constexpr MemberDef kMembers[] = {
    // 暖通
    {L"暖通\\风口\\散流器\\方形散流器", 2, L"风口", L"520", L"B,360,H,360", nullptr},
    {L"暖通\\风口\\散流器\\圆形散流器", 2, L"风口", L"521", L"B,300", nullptr},
    {L"暖通\\风口\\百叶风口\\单层百叶风口", 2, L"风口", L"520", L"B,400,H,200", nullptr},
    {L"暖通\\风口\\百叶风口\\双层百叶风口", 2, L"风口", L"520", L"B,400,H,200", nullptr},
    {L"暖通\\风口\\百叶风口\\防雨百叶风口", 2, L"风口", L"520", L"B,600,H,400", nullptr},
    {L"暖通\\风口\\条缝风口\\条缝型风口", 2, L"风口", L"520", L"B,1000,H,100", nullptr},
    {L"暖通\\风部件\\风法兰\\角钢法兰L25", 1, L"法兰", L"520", L"B,25,H,3", nullptr},
    {L"暖通\\风部件\\风法兰\\角钢法兰L30", 1, L"法兰", L"520", L"B,30,H,4", nullptr},
    {L"暖通\\风部件\\风法兰\\角钢法兰L40", 1, L"法兰", L"520", L"B,40,H,4", nullptr},
    {L"暖通\\风部件\\风法兰\\共板法兰", 1, L"法兰", L"520", L"B,30,H,1", nullptr},
    {L"暖通\\风部件\\风法兰\\扁钢圆法兰", 1, L"法兰", L"521", L"B,25", nullptr},
    {L"暖通\\风部件\\风阀\\70℃防火阀", 1, L"风阀", L"520", L"B,630,H,320", nullptr},
    {L"暖通\\风部件\\风阀\\280℃排烟防火阀", 1, L"风阀", L"520", L"B,630,H,320", nullptr},
    {L"暖通\\风部件\\风阀\\电动多叶调节阀", 1, L"风阀", L"520", L"B,500,H,250", nullptr},
    {L"暖通\\风部件\\风阀\\止回风阀", 1, L"风阀", L"521", L"B,300", nullptr},
    {L"暖通\\风部件\\消声器\\阻抗复合消声器", 1, L"消声器", L"520", L"B,800,H,400", nullptr},
    {L"暖通\\风管\\矩形风管\\镀锌钢板矩形风管", 1, L"风管", L"520", L"B,630,H,320", nullptr},
    {L"暖通\\风管\\圆形风管\\螺旋圆风管", 1, L"风管", L"521", L"B,300", nullptr},
    {L"暖通\\风管\\软风管\\铝箔软风管", 1, L"风管", L"521", L"B,200", nullptr},
    {L"暖通\\风设备\\空调机组\\组合式空调机组", 1, L"空调机组", L"520", L"B,3000,H,1800", nullptr},
    {L"暖通\\风设备\\空调机组\\吊顶式空调机组", 1, L"空调机组", L"520", L"B,1600,H,600", nullptr},
    {L"暖通\\风设备\\空调机组\\新风机组", 1, L"空调机组", L"520", L"B,1400,H,600", nullptr},
    {L"暖通\\风设备\\风机\\轴流风机", 2, L"风机", L"521", L"B,500", nullptr},
    {L"暖通\\风设备\\风机\\离心风机", 2, L"风机", L"520", L"B,900,H,800", nullptr},
    {L"暖通\\风设备\\风机盘管\\卧式暗装风机盘管", 2, L"风机盘管", L"520", L"B,1000,H,500", nullptr},
    {L"暖通\\水附件\\阀门\\闸阀", 2, L"阀门", L"", L"B,200,H,120", nullptr},
    {L"暖通\\水附件\\阀门\\蝶阀", 2, L"阀门", L"", L"B,200,H,120", nullptr},
    {L"暖通\\水附件\\阀门\\止回阀", 2, L"阀门", L"", L"B,200,H,120", nullptr},
    {L"暖通\\水附件\\阀门\\电动二通阀", 2, L"阀门", L"", L"B,200,H,120", nullptr},
    {L"暖通\\水暖设备\\地暖盘管\\PE-RT地暖盘管", 1, L"盘管", L"521", L"B,20", nullptr},
    {L"暖通\\零星构件\\设备基础\\混凝土设备基础", 2, L"设备基础", L"520", L"B,1200,H,1000",
     nullptr},
    {L"暖通\\零星构件\\设备基础\\型钢设备基础", 2, L"设备基础", L"520", L"B,1000,H,800", nullptr},
    // 给排水
    {L"给排水\\附件\\阀门\\闸阀", 2, L"阀门", L"", L"B,200,H,120", nullptr},
    {L"给排水\\附件\\阀门\\蝶阀", 2, L"阀门", L"", L"B,200,H,120", nullptr},
    {L"给排水\\附件\\阀门\\止回阀", 2, L"阀门", L"", L"B,200,H,120", nullptr},
    {L"给排水\\附件\\阀门\\截止阀", 2, L"阀门", L"", L"B,200,H,120", nullptr},
    {L"给排水\\附件\\阀门\\减压阀", 2, L"阀门", L"", L"B,250,H,150", nullptr},
    {L"给排水\\附件\\水表\\旋翼式水表", 2, L"水表", L"", L"B,250,H,150", nullptr},
    {L"给排水\\卫生器具\\洗脸盆\\台式洗脸盆", 2, L"卫生器具", L"", L"B,600,H,450", L"800"},
    {L"给排水\\卫生器具\\地漏\\普通地漏", 2, L"卫生器具", L"521", L"B,100", L"0"},
    {L"给排水\\设备\\水箱\\不锈钢水箱", 2, L"水箱", L"520", L"B,4000,H,3000", nullptr},
    {L"给排水\\设备\\水箱\\玻璃钢水箱", 2, L"水箱", L"520", L"B,3000,H,2000", nullptr},
    {L"给排水\\设备\\水泵\\离心水泵", 2, L"水泵", L"520", L"B,1200,H,500", nullptr},
    {L"给排水\\管道\\给水管\\PPR给水管", 1, L"管道", L"521", L"B,25", nullptr},
    {L"给排水\\管道\\排水管\\PVC-U排水管", 1, L"管道", L"521", L"B,110", nullptr},
    // 消防
    {L"消防\\喷头\\闭式喷头\\直立型喷头", 2, L"喷头", L"521", L"B,15", nullptr},
    {L"消防\\喷头\\闭式喷头\\下垂型喷头", 2, L"喷头", L"521", L"B,15", nullptr},
    {L"消防\\喷头\\闭式喷头\\边墙型喷头", 2, L"喷头", L"521", L"B,15", nullptr},
    {L"消防\\喷头\\开式喷头\\水幕喷头", 2, L"喷头", L"521", L"B,20", nullptr},
    {L"消防\\消火栓\\室内消火栓\\单栓室内消火栓", 2, L"消火栓", L"520", L"B,700,H,240", L"1100"},
    {L"消防\\消火栓\\室内消火栓\\双栓室内消火栓", 2, L"消火栓", L"520", L"B,1000,H,240", L"1100"},
    {L"消防\\附件\\阀门\\信号蝶阀", 2, L"阀门", L"", L"B,250,H,150", nullptr},
    {L"消防\\附件\\阀门\\闸阀", 2, L"阀门", L"", L"B,200,H,120", nullptr},
    {L"消防\\附件\\阀门\\湿式报警阀", 2, L"阀门", L"", L"B,400,H,300", nullptr},
    {L"消防\\储存装置\\水箱\\屋顶消防水箱", 2, L"水箱", L"520", L"B,4000,H,3000", nullptr},
    {L"消防\\灭火器\\手提式灭火器\\手提式干粉灭火器", 2, L"灭火器", L"521", L"B,160", L"0"},
    {L"消防\\管道\\消防管\\热镀锌钢管", 1, L"管道", L"521", L"B,100", nullptr},
    // 电气
    {L"电气\\灯具\\普通灯具\\吸顶灯", 2, L"灯具", L"521", L"B,300", nullptr},
    {L"电气\\灯具\\普通灯具\\荧光灯", 2, L"灯具", L"520", L"B,1200,H,200", nullptr},
    {L"电气\\灯具\\普通灯具\\筒灯", 2, L"灯具", L"521", L"B,150", nullptr},
    {L"电气\\灯具\\普通灯具\\壁灯", 2, L"灯具", L"521", L"B,200", L"2500"},
    {L"电气\\灯具\\应急灯具\\疏散指示灯", 2, L"灯具", L"520", L"B,350,H,150", L"500"},
    {L"电气\\灯具\\应急灯具\\安全出口灯", 2, L"灯具", L"520", L"B,350,H,150", L"2200"},
    {L"电气\\开关插座\\开关\\单联开关", 2, L"开关", L"520", L"B,86,H,86", L"1300"},
    {L"电气\\开关插座\\开关\\双联开关", 2, L"开关", L"520", L"B,86,H,86", L"1300"},
    {L"电气\\开关插座\\插座\\单相二三孔插座", 2, L"插座", L"520", L"B,86,H,86", L"300"},
    {L"电气\\配电箱柜\\配电箱\\照明配电箱", 2, L"配电箱", L"520", L"B,600,H,200", L"1500"},
    {L"电气\\配电箱柜\\配电箱\\动力配电箱", 2, L"配电箱", L"520", L"B,800,H,250", L"1500"},
    {L"电气\\管线\\照明导线\\BV-2.5", 1, L"导线", L"521", L"B,2.5", nullptr},
    {L"电气\\管线\\照明导线\\BV-4", 1, L"导线", L"521", L"B,4", nullptr},
    {L"电气\\管线\\照明导线\\BV-1.5", 1, L"导线", L"521", L"B,1.5", nullptr},
    {L"电气\\管线\\照明导线\\BYJ-2.5", 1, L"导线", L"521", L"B,2.5", nullptr},
    {L"电气\\管线\\动力导线\\BV-6", 1, L"导线", L"521", L"B,6", nullptr},
    {L"电气\\管线\\动力导线\\BV-10", 1, L"导线", L"521", L"B,10", nullptr},
    {L"电气\\管线\\动力导线\\BV-16", 1, L"导线", L"521", L"B,16", nullptr},
    {L"电气\\管线\\动力导线\\BV-25", 1, L"导线", L"521", L"B,25", nullptr},
    {L"电气\\管线\\消防导线\\NH-BV-2.5", 1, L"导线", L"521", L"B,2.5", nullptr},
    {L"电气\\管线\\消防导线\\WDZN-BYJ-2.5", 1, L"导线", L"521", L"B,2.5", nullptr},
    {L"电气\\管线\\其它导线\\RVS-2x1.5", 1, L"导线", L"521", L"B,1.5", nullptr},
    {L"电气\\管线\\其它导线\\RVVP-2x1.0", 1, L"导线", L"521", L"B,1", nullptr},
    {L"电气\\管线\\导管\\SC20", 1, L"导管", L"521", L"B,20", nullptr},
    {L"电气\\管线\\导管\\JDG20", 1, L"导管", L"521", L"B,20", nullptr},
    {L"电气\\管线\\导管\\PC20", 1, L"导管", L"521", L"B,20", nullptr},
    {L"电气\\管线\\导管\\SC15", 1, L"导管", L"521", L"B,15", nullptr},
    {L"电气\\管线\\导管\\SC25", 1, L"导管", L"521", L"B,25", nullptr},
    {L"电气\\管线\\导管\\SC32", 1, L"导管", L"521", L"B,32", nullptr},
    {L"电气\\管线\\导管\\SC40", 1, L"导管", L"521", L"B,40", nullptr},
    {L"电气\\管线\\导管\\SC50", 1, L"导管", L"521", L"B,50", nullptr},
    {L"电气\\管线\\导管\\JDG16", 1, L"导管", L"521", L"B,16", nullptr},
    {L"电气\\管线\\导管\\JDG25", 1, L"导管", L"521", L"B,25", nullptr},
    {L"电气\\管线\\导管\\JDG32", 1, L"导管", L"521", L"B,32", nullptr},
    {L"电气\\管线\\导管\\PC16", 1, L"导管", L"521", L"B,16", nullptr},
    {L"电气\\管线\\导管\\PC25", 1, L"导管", L"521", L"B,25", nullptr},
    {L"电气\\管线\\导管\\PC32", 1, L"导管", L"521", L"B,32", nullptr},
    {L"电气\\管线\\线槽\\金属线槽100x50", 1, L"线槽", L"520", L"B,100,H,50", nullptr},
    {L"电气\\管线\\线槽\\金属线槽200x100", 1, L"线槽", L"520", L"B,200,H,100", nullptr},
    {L"电气\\管线\\线槽\\PVC线槽60x40", 1, L"线槽", L"520", L"B,60,H,40", nullptr},
    {L"电气\\管线\\导线·导管\\BV-3x2.5-SC20", 1, L"导线", L"521", L"B,20", nullptr},
    {L"电气\\管线\\导线·导管\\BV-3x4-SC25", 1, L"导线", L"521", L"B,25", nullptr},
    {L"电气\\电缆桥架\\电缆\\YJV-4x25+1x16", 1, L"电缆", L"521", L"B,30", nullptr},
    {L"电气\\电缆桥架\\电缆\\YJV-5x10", 1, L"电缆", L"521", L"B,20", nullptr},
    {L"电气\\电缆桥架\\电缆\\YJV-4x50+1x25", 1, L"电缆", L"521", L"B,40", nullptr},
    {L"电气\\电缆桥架\\电缆\\WDZN-YJY-4x35+1x16", 1, L"电缆", L"521", L"B,35", nullptr},
    {L"电气\\电缆桥架\\母线·馈线\\密集型母线槽", 1, L"母线", L"520", L"B,200,H,150", nullptr},
    {L"电气\\电缆桥架\\母线·馈线\\空气型母线槽", 1, L"母线", L"520", L"B,250,H,180", nullptr},
    {L"电气\\电缆桥架\\桥架\\槽式桥架200x100", 1, L"桥架", L"520", L"B,200,H,100", nullptr},
    {L"电气\\电缆桥架\\桥架\\梯式桥架400x150", 1, L"桥架", L"520", L"B,400,H,150", nullptr},
    // 1_5u
    {L"1_5u\\穿管引线\\配线\\BV-2.5", 1, L"导线", L"521", L"B,2.5", nullptr},
    {L"1_5u\\穿管引线\\配线\\BYJ-2.5", 1, L"导线", L"521", L"B,2.5", nullptr},
    {L"1_5u\\穿管引线\\配线\\BV-4", 1, L"导线", L"521", L"B,4", nullptr},
    {L"1_5u\\穿管引线\\配管\\SC20", 1, L"导管", L"521", L"B,20", nullptr},
    {L"1_5u\\穿管引线\\配管\\PC20", 1, L"导管", L"521", L"B,20", nullptr},
    {L"1_5u\\穿管引线\\配管\\SC25", 1, L"导管", L"521", L"B,25", nullptr},
    {L"1_5u\\穿管引线\\配管\\JDG20", 1, L"导管", L"521", L"B,20", nullptr},
    {L"1_5u\\穿管引线\\配管配线\\BV-3x2.5-PC20", 1, L"导线", L"521", L"B,20", nullptr},
    {L"1_5u\\穿管引线\\配管配线\\BYJ-3x2.5-SC20", 1, L"导线", L"521", L"B,20", nullptr},
    {L"1_5u\\线槽桥架\\电缆\\YJV-5x16", 1, L"电缆", L"521", L"B,25", nullptr},
    {L"1_5u\\线槽桥架\\电缆\\YJV-4x35+1x16", 1, L"电缆", L"521", L"B,35", nullptr},
    {L"1_5u\\灯具\\普通灯具\\吸顶灯", 2, L"灯具", L"521", L"B,300", nullptr},
    {L"1_5u\\灯具\\普通灯具\\荧光灯", 2, L"灯具", L"520", L"B,1200,H,200", nullptr},
};

// Extra attribute rows: label, unit, value, key.
struct FieldDef {
    const wchar_t* path;
    const wchar_t* label;
    const wchar_t* unit;
    const wchar_t* value;
    const wchar_t* key;
};

constexpr FieldDef kFields[] = {
    {L"暖通\\风管\\矩形风管\\镀锌钢板矩形风管", L"截面形状", L"", L"矩形",
     L"HVAC_DuctSectionShape"},
    {L"暖通\\风管\\矩形风管\\镀锌钢板矩形风管", L"材质", L"", L"镀锌钢板", L"HVAC_DuctMaterial"},
    {L"暖通\\风管\\矩形风管\\镀锌钢板矩形风管", L"板厚", L"mm", L"0.6", L"HVAC_DuctThickness"},
    {L"暖通\\风管\\圆形风管\\螺旋圆风管", L"截面形状", L"", L"圆形", L"HVAC_DuctSectionShape"},
    {L"暖通\\风管\\圆形风管\\螺旋圆风管", L"材质", L"", L"镀锌钢板", L"HVAC_DuctMaterial"},
    {L"暖通\\风管\\软风管\\铝箔软风管", L"截面形状", L"", L"圆形", L"HVAC_FlexibleDShape"},
    {L"暖通\\风管\\软风管\\铝箔软风管", L"材质", L"", L"铝箔", L"HVAC_DuctMaterial"},
    {L"暖通\\风口\\散流器\\方形散流器", L"风量", L"m³/h", L"500", L"HVAC_AirFlow"},
    {L"暖通\\风口\\散流器\\圆形散流器", L"风量", L"m³/h", L"400", L"HVAC_AirFlow"},
    {L"暖通\\风设备\\空调机组\\组合式空调机组", L"风量", L"m³/h", L"20000", L"HVAC_AirFlow"},
    {L"暖通\\风设备\\空调机组\\组合式空调机组", L"制冷量", L"kW", L"180", L"HVAC_Cooling"},
    {L"消防\\喷头\\闭式喷头\\下垂型喷头", L"动作温度", L"℃", L"68", L"FP_Temperature"},
    {L"消防\\喷头\\闭式喷头\\下垂型喷头", L"流量系数", L"", L"80", L"FP_KFactor"},
    {L"电气\\灯具\\普通灯具\\荧光灯", L"功率", L"W", L"2x28", L"EL_Power"},
    {L"电气\\灯具\\普通灯具\\吸顶灯", L"功率", L"W", L"22", L"EL_Power"},
};

struct SysCodeDef {
    const wchar_t* spec;
    const wchar_t* code;
    const wchar_t* name;
    int color;  // colour index of the system's layers
    const wchar_t* linetype;
};

constexpr SysCodeDef kSysCodes[] = {
    {L"暖通", L"SF", L"送风", 4, L"CONTINUOUS"},
    {L"暖通", L"HF", L"回风", 3, L"DASHED"},
    {L"暖通", L"PF", L"排风", 2, L"CONTINUOUS"},
    {L"暖通", L"XF", L"新风", 140, L"CONTINUOUS"},
    {L"暖通", L"PY", L"排烟", 1, L"CONTINUOUS"},
    {L"暖通", L"LG", L"冷冻水供水", 5, L"CONTINUOUS"},
    {L"暖通", L"LH", L"冷冻水回水", 5, L"DASHED"},
    {L"暖通", L"N", L"冷凝水", 6, L"DASHED"},
    {L"给排水", L"J", L"给水", 3, L"CONTINUOUS"},
    {L"给排水", L"RJ", L"热水给水", 1, L"CONTINUOUS"},
    {L"给排水", L"W", L"污水", 6, L"DASHED"},
    {L"给排水", L"F", L"废水", 42, L"DASHED"},
    {L"给排水", L"Y", L"雨水", 4, L"DASHED"},
    {L"给排水", L"T", L"通气", 8, L"DASHED"},
    {L"消防", L"XH", L"消火栓", 1, L"CONTINUOUS"},
    {L"消防", L"ZP", L"喷淋", 6, L"CONTINUOUS"},
    {L"消防", L"SM", L"水幕", 4, L"CONTINUOUS"},
    {L"电气", L"WL", L"照明", 2, L"CONTINUOUS"},
    {L"电气", L"WP", L"动力", 1, L"CONTINUOUS"},
    {L"电气", L"WE", L"应急", 3, L"DASHED"},
    {L"电气", L"WX", L"插座", 4, L"CONTINUOUS"},
    {L"电气", L"WF", L"消防", 6, L"DASHED"},
    {L"电气", L"WD", L"弱电", 5, L"DASHED"},
    {L"1_5u", L"WL", L"照明", 2, L"CONTINUOUS"},
    {L"1_5u", L"WP", L"动力", 1, L"CONTINUOUS"},
    {L"1_5u", L"WE", L"应急", 3, L"DASHED"},
    {L"1_5u", L"WC", L"控制", 5, L"DASHED"},
};

// Floors: single numbers, a slash range of standard floors sharing one height, and a comma
// list whose floors have records of their own (7 and 9 are alike; 8 between them is a refuge
// floor with a greater height).
struct FloorMemberDef {
    const wchar_t* name;
    double height;
    double elevation;
};

struct FloorDef {
    const wchar_t* name;
    double height;
    double elevation;  // of the floor's bottom
    int layModes;      // which laying-mode set applies
    FloorMemberDef members[2];
};

constexpr FloorDef kFloors[] = {
    {L"-1", 4500, -4500, 0, {}},
    {L"1", 4500, 0, 1, {}},
    {L"2", 4200, 4500, 1, {}},
    {L"3/6", 3600, 8700, 1, {}},
    {L"7,9", 3600, 23100, 1, {{L"7", 3600, 23100}, {L"9", 3600, 31200}}},
    {L"8", 4500, 26700, 1, {}},
    {L"10", 3000, 34800, 2, {}},
};

struct LayModeDef {
    const wchar_t* code;
    const wchar_t* description;
};

const LayModeDef kBasementLayModes[] = {
    {L"CE", L"沿顶板明敷"}, {L"WS", L"沿墙明敷"}, {L"AC", L"沿柱敷设"}, {L"FC", L"地面内暗敷"}};
const LayModeDef kStoreyLayModes[] = {
    {L"WC", L"墙内暗敷"}, {L"CC", L"顶板内暗敷"}, {L"FC", L"地面内暗敷"}, {L"SCE", L"吊顶内敷设"}};
const LayModeDef kRoofLayModes[] = {
    {L"WS", L"沿墙明敷"}, {L"CE", L"沿顶板明敷"}, {L"WC", L"墙内暗敷"}};

struct CommandDef {
    const wchar_t* name;
    const wchar_t* description;
    bool jigDrawBlock;
    bool checkAttribute;
    bool updateUi;
    const wchar_t* bigType;
    const wchar_t* smallTypes;
    const wchar_t* refreshPath;
    const wchar_t* extra;  // items separated by ';'
};

constexpr CommandDef kCommands[] = {
    // PLACE lays out whatever the drafter chose in the bar; the commands below offer their own.
    {L"PLACE", L"布置构件", false, true, false, L"", L"", L"", L""},
    {L"AIRUNIT", L"布置风设备", true, true, true, L"风设备", L"空调机组,风机,风机盘管",
     L"暖通\\风设备", L""},
    {L"AIRTERMINAL", L"布置风口", true, true, true, L"风口", L"散流器,百叶风口,条缝风口",
     L"暖通\\风口", L""},
    {L"DUCTPART", L"布置风部件", true, true, true, L"风部件", L"风阀,消声器,风法兰",
     L"暖通\\风部件", L""},
    {L"VALVE", L"布置阀门", false, true, true, L"附件", L"阀门,水表", L"", L"KELAZPIPEVALVE"},
    {L"TANK", L"布置水箱水泵", true, true, true, L"设备", L"水箱,水泵", L"给排水\\设备", L""},
    {L"SANITARY", L"布置卫生器具", false, true, true, L"卫生器具", L"洗脸盆,地漏", L"", L""},
    {L"EQUIPBASE", L"布置设备基础", false, true, true, L"零星构件", L"设备基础", L"", L""},
    {L"SPRINKLER", L"布置喷头", false, true, true, L"喷头", L"闭式喷头,开式喷头", L"", L""},
    {L"HYDRANT", L"布置消火栓", false, true, true, L"消火栓", L"室内消火栓", L"", L""},
    {L"EXTINGUISHER", L"布置灭火器", false, true, true, L"灭火器", L"手提式灭火器", L"", L""},
    {L"LAMP", L"布置灯具", false, true, true, L"灯具", L"普通灯具,应急灯具", L"", L""},
    {L"SWITCH", L"布置开关插座", false, true, true, L"开关插座", L"开关,插座", L"", L""},
    {L"PANEL", L"布置配电箱", false, true, true, L"配电箱柜", L"配电箱", L"", L""},
    {L"RECTLAYOUT", L"矩形区域布置", false, true, false, L"", L"", L"", L"矩形"},
    {L"ARCLAYOUT", L"弧线布置", false, true, false, L"", L"", L"", L"弧线"},
    {L"SECTORLAYOUT", L"扇形区域布置", false, true, false, L"", L"", L"", L"扇形"},
    {L"LEAD", L"绘制引线", false, true, true, L"管线", L"照明导线,动力导线,消防导线,其它导线", L"",
     L""},
    {L"MAINLEAD", L"绘制主引线", false, true, true, L"管线", L"照明导线,动力导线,消防导线,其它导线",
     L"", L""},
    {L"PIPE", L"绘制管道", false, true, true, L"管道", L"给水管,排水管,消防管", L"", L""},
    {L"MAINPIPE", L"绘制立管", false, true, true, L"管道", L"给水管,排水管,消防管", L"", L""},
    {L"RISER", L"绘制立管", false, true, true, L"管道", L"给水管,排水管,消防管", L"", L""},
    {L"MPIPE", L"多管绘制", false, false, false, L"管线",
     L"照明导线,动力导线,消防导线,其它导线,导管,线槽,导线·导管,电缆,母线·馈线", L"", L"dxbz;rdxbz"},
    {L"SOFTPIPE", L"软管绘制", false, true, true, L"风管", L"软风管", L"", L""},
    {L"FLOORCOIL", L"地暖盘管绘制", false, true, true, L"水暖设备", L"地暖盘管", L"", L""},
    {L"FLANGETABLE", L"法兰匹配表", false, false, false, L"风部件", L"风法兰", L"", L"方形;圆形"},
    {L"AUTOFLANGE", L"自动生成法兰", false, false, false, L"风部件", L"风法兰", L"", L""},
    {L"PERFORATE", L"立管穿层", false, false, false, L"", L"", L"", L""},
    {L"SPLITRISER", L"立管按楼层拆分", false, false, false, L"", L"", L"", L""},
    {L"EXTEND", L"延伸风管端点", false, false, false, L"", L"", L"", L""},
    {L"NEWDUCT", L"新建风管规格", false, false, false, L"风管", L"矩形风管,圆形风管,软风管", L"",
     L""},
    {L"ATT", L"构件属性定义", false, false, false, L"", L"", L"", L""},
    {L"SYS", L"系统编号设置", false, false, false, L"", L"", L"", L""},
    {L"FLOOR", L"楼层设置", false, false, false, L"", L"", L"", L""},
    {L"SPEC", L"切换专业", false, false, false, L"", L"", L"", L""},
    {L"PICKHEIGHT", L"拾取标高", false, false, false, L"", L"", L"", L""},
    {L"LEVEL", L"标高对话框", false, false, false, L"", L"", L"", L""},
    {L"CONNECTED", L"查询连接的管线", false, false, false, L"", L"", L"", L""},
};

// Colour of the annotation layers, whatever the system.
constexpr int kAnnotationLayerColor = 7;

bool InsertNode(SqliteDb& db, const char* sql, std::int64_t parent, const CString& name, int ord,
                std::int64_t& id) {
    SqliteStatement st(db, sql);
    st.Bind(1, parent).Bind(2, name).Bind(3, ord);
    if (!st.Run()) return false;
    id = db.LastInsertRowId();
    return true;
}

bool WriteSpecsAndCategories(SqliteDb& db, std::map<std::wstring, std::int64_t>& specIds) {
    int ord = 0;
    for (const SpecDef& s : kSpecs) {
        SqliteStatement st(db, "INSERT INTO speciality(name, title, ord) VALUES (?1, ?2, ?3)");
        if (!st.Bind(1, CString(s.name)).Bind(2, CString(s.title)).Bind(3, ++ord).Run())
            return false;
        specIds[s.name] = db.LastInsertRowId();
    }
    std::map<std::wstring, std::int64_t> bigIds, smallIds;
    std::map<std::int64_t, int> bigCount, smallCount, memberCount;  // children so far, by parent
    SqliteStatement member(db,
                           "INSERT INTO attribute(small_id, name, ord, section_type, shape_code, "
                           "size_text, kind, block_name, sys_up_height) VALUES (?1, ?2, ?3, ?4, "
                           "?5, ?6, ?7, ?8, ?9)");
    std::map<std::wstring, std::int64_t> memberIds;
    for (const MemberDef& m : kMembers) {
        CStringArray seg;
        KELAZ_ASSERT(SplitCategoryPath(m.path, seg) && seg.GetSize() == 4,
                     "default catalogue paths have four segments");
        const std::wstring bigKey = seg[0].str() + L"\\" + seg[1].str();
        const std::wstring smallKey = bigKey + L"\\" + seg[2].str();
        const std::int64_t spec = specIds.at(seg[0].str());
        if (!bigIds.count(bigKey) &&
            !InsertNode(db, "INSERT INTO big_category(spec_id, name, ord) VALUES (?1, ?2, ?3)",
                        spec, seg[1], ++bigCount[spec], bigIds[bigKey]))
            return false;
        const std::int64_t big = bigIds[bigKey];
        if (!smallIds.count(smallKey) &&
            !InsertNode(db, "INSERT INTO small_category(big_id, name, ord) VALUES (?1, ?2, ?3)",
                        big, seg[2], ++smallCount[big], smallIds[smallKey]))
            return false;
        const std::int64_t small = smallIds[smallKey];
        member.Reset();
        member.Bind(1, small).Bind(2, seg[3]).Bind(3, ++memberCount[small]);
        member.Bind(4, m.sectionType).Bind(5, CString(m.shapeCode)).Bind(6, CString(m.size));
        member.Bind(7, CString(m.kind)).Bind(8, seg[3]);
        if (m.upHeight)
            member.Bind(9, CString(m.upHeight));
        else
            member.BindNull(9);
        if (!member.Run()) return false;
        memberIds[m.path] = db.LastInsertRowId();
    }
    SqliteStatement field(db,
                          "INSERT INTO attribute_field(attribute_id, ord, label, unit, value, key) "
                          "VALUES (?1, ?2, ?3, ?4, ?5, ?6)");
    std::map<std::int64_t, int> fieldCount;
    for (const FieldDef& f : kFields) {
        const std::int64_t id = memberIds.at(f.path);
        field.Reset();
        field.Bind(1, id).Bind(2, ++fieldCount[id]).Bind(3, CString(f.label));
        field.Bind(4, CString(f.unit)).Bind(5, CString(f.value)).Bind(6, CString(f.key));
        if (!field.Run()) return false;
    }
    return true;
}

bool WriteSysCodesAndLayers(SqliteDb& db, const std::map<std::wstring, std::int64_t>& specIds) {
    SqliteStatement code(db,
                         "INSERT INTO sys_code(spec_id, code, name, color, linetype, ord) VALUES "
                         "(?1, ?2, ?3, ?4, ?5, ?6)");
    int ord = 0;
    for (const SysCodeDef& c : kSysCodes) {
        code.Reset();
        code.Bind(1, specIds.at(c.spec)).Bind(2, CString(c.code)).Bind(3, CString(c.name));
        code.Bind(4, c.color).Bind(5, CString(c.linetype)).Bind(6, ++ord);
        if (!code.Run()) return false;
    }
    // One layer per speciality, big category and system, in the system's colour, and beside it
    // the layer of the annotations; the names follow CKELAzLayer's rule.
    const std::string sql = R"sql(
        INSERT INTO layer(name, color, linetype, ord)
        SELECT s.name || '-' || b.name || '-' || c.code || x.suffix,
               CASE WHEN x.suffix = '' THEN c.color ELSE )sql" +
                            std::to_string(kAnnotationLayerColor) + R"sql( END,
               CASE WHEN x.suffix = '' THEN c.linetype ELSE 'CONTINUOUS' END,
               ROW_NUMBER() OVER (ORDER BY s.ord, b.ord, c.ord, x.suffix)
        FROM speciality s JOIN big_category b ON b.spec_id = s.id
             JOIN sys_code c ON c.spec_id = s.id
             CROSS JOIN (SELECT '' AS suffix UNION ALL SELECT '-标注') x;
    )sql";
    return db.Exec(sql.c_str());
}

bool WriteFloors(SqliteDb& db) {
    SqliteStatement floor(
        db, "INSERT INTO floor(name, height, elevation, ord) VALUES (?1, ?2, ?3, ?4)");
    SqliteStatement member(db,
                           "INSERT INTO floor_member(floor_id, name, height, elevation) VALUES "
                           "(?1, ?2, ?3, ?4)");
    SqliteStatement mode(db,
                         "INSERT INTO lay_mode(floor_id, ord, code, description) VALUES (?1, ?2, "
                         "?3, ?4)");
    int ord = 0;
    for (const FloorDef& f : kFloors) {
        floor.Reset();
        if (!floor.Bind(1, CString(f.name))
                 .Bind(2, f.height)
                 .Bind(3, f.elevation)
                 .Bind(4, ++ord)
                 .Run())
            return false;
        const std::int64_t id = db.LastInsertRowId();
        for (const FloorMemberDef& m : f.members) {
            if (!m.name) continue;
            member.Reset();
            if (!member.Bind(1, id)
                     .Bind(2, CString(m.name))
                     .Bind(3, m.height)
                     .Bind(4, m.elevation)
                     .Run())
                return false;
        }
        const LayModeDef* modes = f.layModes == 0   ? kBasementLayModes
                                  : f.layModes == 1 ? kStoreyLayModes
                                                    : kRoofLayModes;
        const size_t count = f.layModes == 0   ? std::size(kBasementLayModes)
                             : f.layModes == 1 ? std::size(kStoreyLayModes)
                                               : std::size(kRoofLayModes);
        for (size_t i = 0; i < count; ++i) {
            mode.Reset();
            mode.Bind(1, id).Bind(2, static_cast<int>(i + 1)).Bind(3, CString(modes[i].code));
            if (!mode.Bind(4, CString(modes[i].description)).Run()) return false;
        }
    }
    return true;
}

}  // namespace

bool DefaultCommandRow(const CString& name, DefaultCommand& row) {
    for (const CommandDef& c : kCommands) {
        if (name.CompareNoCase(c.name) != 0) continue;
        row = {c.name,    c.description, c.jigDrawBlock, c.checkAttribute, c.updateUi,
               c.bigType, c.smallTypes,  c.refreshPath,  c.extra};
        return true;
    }
    return false;
}

namespace {

bool WriteCommands(SqliteDb& db) {
    SqliteStatement st(db,
                       "INSERT INTO command(name, ord, description, jig_draw_block, "
                       "check_attribute, update_ui, big_type, small_types, refresh_path, extra) "
                       "VALUES (?1, ?2, ?3, ?4, ?5, ?6, ?7, ?8, ?9, ?10)");
    int ord = 0;
    for (const CommandDef& c : kCommands) {
        st.Reset();
        st.Bind(1, CString(c.name)).Bind(2, ++ord).Bind(3, CString(c.description));
        st.Bind(4, c.jigDrawBlock).Bind(5, c.checkAttribute).Bind(6, c.updateUi);
        st.Bind(7, CString(c.bigType)).Bind(8, CString(c.smallTypes));
        st.Bind(9, CString(c.refreshPath)).Bind(10, CString(c.extra));
        if (!st.Run()) return false;
    }
    return true;
}

}  // namespace

bool WriteDefaultCatalogue(SqliteDb& db, const CString& projectName) {
    std::map<std::wstring, std::int64_t> specIds;
    SqliteStatement setting(db, "INSERT INTO setting(key, value) VALUES (?1, ?2)");
    const std::pair<const wchar_t*, CString> settings[] = {
        {L"name", projectName}, {L"current_spec", L"暖通"}, {L"current_floor", L"1"}};
    for (const auto& [key, value] : settings) {
        setting.Reset();
        if (!setting.Bind(1, CString(key)).Bind(2, value).Run()) return false;
    }
    return WriteSpecsAndCategories(db, specIds) && WriteSysCodesAndLayers(db, specIds) &&
           WriteFloors(db) && WriteCommands(db);
}

}  // namespace kelaz

/** @file kesto_road.h
 *  Road alignments: stake mileages, positions, offsets and design heights, through a flat C interface.
 *
 *  Conventions, said once for every function below:
 *  - A road is an opaque handle, the first argument of every function. The library keeps no global state: distinct
 *    roads may be used from different threads at the same time, one road from one thread at a time only, because a
 *    query may rebuild derived data. What many threads are to read at once is frozen first: FreezeRoad().
 *  - Axes and units: x is the northing and y the easting, in metres. Azimuths are degrees in [0, 360), measured from
 *    +x towards +y (clockwise from north). Mileages, lengths, offsets, radii and heights are metres. Offsets are
 *    positive to the right of the direction of increasing mileage. Grades are ratios.
 *  - Mileages: the stake mileage is what is written on the stakes; the continuous mileage is the start mileage plus the
 *    distance along the road. Broken chains make the stake mileage jump; after a backward jump a stake mileage occurs
 *    more than once, and its 0-based occurrence (counted along the road) tells which one is meant. A negative
 *    occurrence finds nothing.
 *  - Records are copied in and out; the caller owns all memory that it passes and the library keeps no pointer to it.
 *    Indices are 0-based.
 *  - Failure is told by the result: false, 0, 0.0 or a null pointer, and a status for the file functions. A null
 *    handle gives the failure value at once; a null pointer for anything needed, an index out of range or a number
 *    that is not finite in a query fails too, and nothing is changed. Where a function writes outputs in spite of a
 *    failure, its description says so. The reason of the last failed call stands in GetLastFailure().
 *  - Editing never recomputes. Queries build the element chain when the total length is not known yet (a new road,
 *    or after a failed build); after later edits call UpdateData() or DesignRoad().
 *  - Paths: on Windows UTF-8, or in the ANSI code page where a path is no valid UTF-8; elsewhere bytes as they are.
 *  - No exception, signal or abort leaves the library. */
#ifndef KESTO_ROAD_KESTO_ROAD_H
#define KESTO_ROAD_KESTO_ROAD_H

#include <stdbool.h>
#include <stddef.h>
#include <stdint.h>

#include "kesto_road/version.h"

#if defined(_WIN32)
#define KESTO_CALL __stdcall
#if defined(KESTO_ROAD_BUILDING)
#define KESTO_API __declspec(dllexport)
#else
#define KESTO_API __declspec(dllimport)
#endif
#else
#define KESTO_CALL
#if defined(__GNUC__)
#define KESTO_API __attribute__((visibility("default")))
#else
#define KESTO_API
#endif
#endif

#ifdef __cplusplus
extern "C" {
#endif

/** A road with all its design data; made by StartRoadDesign() or FreezeRoad(), ended by EndRoadDesign(). */
typedef struct RoadDesign RoadDesign;

/* ------------------------------------------------------------------------------------------------ status codes --- */

/** Every status that a call can leave behind, in Failure::status or as the result of a file function. */
enum KestoStatus {
    KESTO_SUCCESS = 0,
    KESTO_UNKNOWN_DESIGN_MODE = 1, /**< the road design mode is none of 0, 1, 2, 3 */
    KESTO_OUT_OF_MEMORY = 2,       /**< memory ran out; the design data are as before */
    KESTO_TOO_FEW_ELEMENTS = 3,    /**< fewer than two elements: bound tells the need, value what is there */
    KESTO_CURVE_DOES_NOT_FIT = 4,  /**< an intersection's curve does not fit: record = the intersection. Limit = what
                                      its tangents or spirals exceed, -1 for points that coincide, a deflection of 180
                                      degrees, a negative or not finite radius or length, and a spiral between radii
                                      that are equal or too nearly equal to be evaluated (300 and 300.000001 m) */
    KESTO_POINT_NOT_JOINED = 5,    /**< a coordinate point cannot be joined to the next: record = the point, value = the
                                      distance to the next (m). Limit = the diameter that an arc's chord exceeds, -1 for
                                      points that coincide, a radius that is missing, negative or not finite, an unknown
                                      type, and a spiral that never meets the next point or lies between radii that are
                                      equal or too nearly equal to be evaluated */
    KESTO_NO_START_ELEMENT = 6,    /**< the first element is no start record (type 0) */
    KESTO_ELEMENT_NOT_EVALUABLE = 7, /**< an element has no geometry: equal spiral radii, unknown type, bad length */
    KESTO_UNKNOWN_STAKE_MODE = 8,    /**< the make-stake type is neither 0 nor 1 */
    KESTO_GENERATION_MISSING = 9,    /**< reserved: every road design mode has its generation */
    KESTO_NULL_HANDLE_OR_PATH = 12,  /**< file functions: null handle or null path */
    KESTO_FILE_NOT_OPENED = 13,      /**< the file cannot be opened for reading */
    KESTO_WRONG_EXTENSION = 14,      /**< the path does not end in the extension that the function reads */
    KESTO_FILE_NOT_WRITTEN = 15,     /**< the file could not be written whole; an earlier file is untouched */
    KESTO_FILE_OUT_OF_MEMORY = 16,   /**< memory ran out while reading or writing a file */
    KESTO_NOTHING_TO_SAVE = 17,      /**< no road between the two mileages */
    KESTO_RECORDS_SKIPPED = 18,      /**< only in Failure, the call gave 0: value = how many records were not read,
                                          record = line of the first one (1-based), list = its list */
    KESTO_NULL_ARGUMENT = 20,        /**< a null pointer where a record, array, text or output is needed */
    KESTO_ARGUMENT_NOT_FINITE = 21,  /**< an argument, or the mileage that orders a record, is no finite number */
    KESTO_INDEX_OUT_OF_RANGE = 22,   /**< value = the index, bound = the number of records */
    KESTO_RECORD_COUNT_REFUSED = 23, /**< value = the number of records given, bound = the limit per call; 0 where none
                                        but a negative number is refused */
    KESTO_DUPLICATE_MILEAGE = 24, /**< record = the stored record at this mileage, -1 where it is one of the same array;
                                     value = the mileage */
    KESTO_MILEAGE_OFF_ROAD = 25,  /**< value = the mileage, bound = the road's end that it passes, excess = by how
                                       much, limit = which end */
    KESTO_NO_SUCH_OCCURRENCE = 26, /**< the stake mileage lies in a gap or occurs less often: value = the occurrence
                                        asked for, bound = how many there are */
    KESTO_DISTANCE_BEYOND_ELEMENT = 27, /**< value = the distance, bound = the element's length, excess = by how much */
    KESTO_NO_FOOT = 28,   /**< no element admits the point between the two limits: value = the distance from the limit
                             given instead, bound = its mileage */
    KESTO_NO_STAKES = 29, /**< there is no stake list: run DesignRoad() first */
    KESTO_RESULT_NOT_FINITE = 30,   /**< the answer would not be a finite number */
    KESTO_NO_CROSS_SECTION = 31,    /**< no cross section there, or none that holds the offset: value = the distance
                                         from the centre line, bound = the section's width, excess = by how much */
    KESTO_NO_HEIGHT = 32,           /**< the profile gives no height there: value = the continuous mileage */
    KESTO_UNKNOWN_CURVE_MODE = 33,  /**< the vertical curve mode is neither 0 nor 1 */
    KESTO_UNKNOWN_SIDE = 34,        /**< the side is neither 0 (left) nor 1 (right) */
    KESTO_UNKNOWN_CHANGE_KIND = 35, /**< the kind of a change section is neither 0 nor 1 */
    KESTO_VALUE_COUNT_DIFFERS = 36, /**< value = the number of values or flags, bound = the number of plates */
    KESTO_ARRAY_TOO_SMALL = 37,     /**< value = the records (or bytes) needed, bound = the capacity given */
    KESTO_INTERNAL_ERROR = 39,      /**< a fault of the library itself: please report it */
    KESTO_ROAD_IS_FROZEN = 50,      /**< the road is frozen and cannot be edited: nothing is read into it */
    KESTO_NO_MILEAGE_IN_TEXT = 51   /**< the text is no mileage of this road */
};

/** Which list a Failure speaks of. */
enum KestoList {
    KESTO_LIST_NONE = -1,           /**< none */
    KESTO_LIST_INTERSECTIONS = 0,   /**< Intersection records */
    KESTO_LIST_ELEMENTS = 1,        /**< Element records, the start record included */
    KESTO_LIST_COORDINATES = 2,     /**< Coordinate records */
    KESTO_LIST_STAKES = 3,          /**< the design stake list */
    KESTO_LIST_BROKEN_CHAINS = 4,   /**< BrokenChain records */
    KESTO_LIST_VERTICAL_CURVES = 5, /**< VerticalCurve records */
    KESTO_LIST_PLATES = 6,          /**< the plates of a side */
    KESTO_LIST_CHANGE_SECTIONS = 7, /**< the change sections of a side and kind */
    KESTO_LIST_SECTION_MILEAGES = 8 /**< the section mileage index */
};

/** Which limit a Failure speaks of. */
enum KestoLimit {
    KESTO_LIMIT_NONE = -1,            /**< none */
    KESTO_LIMIT_ROAD_START = 0,       /**< the mileage of the road's start (m) */
    KESTO_LIMIT_ROAD_END = 1,         /**< the mileage of the road's end (m) */
    KESTO_LIMIT_ELEMENT_LENGTH = 2,   /**< the length of an element (m) */
    KESTO_LIMIT_RECORD_COUNT = 3,     /**< how many records a list has */
    KESTO_LIMIT_RECORDS_PER_CALL = 4, /**< how many records a call takes */
    KESTO_LIMIT_OCCURRENCES = 5,      /**< how often a stake mileage occurs */
    KESTO_LIMIT_POLYGON_SIDE = 6,     /**< tangents overlap: value = their sum, bound = the polygon side (m) */
    KESTO_LIMIT_DEFLECTION = 7,  /**< spirals turn too much: value = their turn, bound = the deflection (degrees) */
    KESTO_LIMIT_ARC_DIAMETER = 8 /**< no arc spans a chord: value = the chord, bound = the arc's diameter (m) */
};

/** What a ReadingFinding tells. Where no other field is named, only line and section are set. */
enum KestoReadingReason {
    KESTO_READING_NO_HEADER = 1,         /**< the first line holds no stake settings: they are those of a new road */
    KESTO_READING_UNKNOWN_SECTION = 2,   /**< lines that belong to no section are passed over, and a save drops them:
                                              text = the first word, value = how many lines */
    KESTO_READING_KEYWORD_SPELLING = 3,  /**< a keyword is spelled otherwise: text = as it stands */
    KESTO_READING_SECTION_REPEATED = 4,  /**< the section was there already, in otherLine: its records are added */
    KESTO_READING_SECTION_SWALLOWED = 5, /**< no empty line before a keyword (text): this line and those up to
                                              otherLine are read as records of the section before */
    KESTO_READING_SECOND_FORM = 6,       /**< the alignment or the profile was there already in another form (text, in
                                              otherLine): this one holds */
    KESTO_READING_NOT_A_NUMBER = 7,      /**< a field holds something else (text): value = what is read of it */
    KESTO_READING_NUMBER_TOO_LARGE = 8,  /**< a number (text) that its field cannot hold: the record is skipped */
    KESTO_READING_FIELDS_MISSING = 9,    /**< numbers are missing and read as 0: value = how many, bound = the fields of
                                              a line */
    KESTO_READING_FIELDS_EXTRA = 10,     /**< the line has more words than fields: value = how many more. A name with
                                              blanks is cut to its first word, anything else is passed over */
    KESTO_READING_RECORD_REFUSED = 11, /**< the record is skipped: status, list, record, limit, value, bound and excess
                                            are those of the Failure; otherLine is that of the record in its place */
    KESTO_READING_LINE_TOO_LONG = 12,  /**< the file is read no further: value = the line's bytes, bound = the number
                                            that it must stay below */
    KESTO_READING_NO_LINE_END = 13,    /**< the file ends inside this line: something may be cut off */
    KESTO_READING_ZERO_BYTE = 14,      /**< what follows a zero byte in the line is passed over */
    KESTO_READING_NOT_UTF8 = 15,       /**< value = how many lines are no UTF-8: all names of the file are taken as they
                                            stand */
    KESTO_READING_VALUE_RAISED = 16,   /**< value = as it stands, bound = what is taken instead */
    KESTO_READING_VALUE_UNKNOWN = 17,  /**< value = a mode or type that means nothing: it is kept */
    KESTO_READING_VALUE_DIFFERS = 18,  /**< what stands twice differs: value = the first, which holds, bound = the
                                            second */
    KESTO_READING_TYPES_MISSING = 19,  /**< value = lines of transition types, bound = change sections: those without
                                            one are linear */
    KESTO_READING_LINE_TOO_SHORT = 20  /**< a line of one character (text) ends the section, as an empty one does, and
                                            is passed over */
};

/* ------------------------------------------------------------------------------------------------------ records --- */

/** Intersection point of two tangents with its curve: entry spiral, arc, exit spiral. The first and the last one are
 * the ends of the road and have no curve: only their points are read. 96 bytes. */
typedef struct Intersection {
    char name[32];             /**< shown, never interpreted */
    double x;                  /**< northing (m) */
    double y;                  /**< easting (m) */
    double radius;             /**< arc radius (m), 0 for no curve */
    double spiralIn;           /**< length of the entry spiral (m), 0 for none */
    double spiralOut;          /**< length of the exit spiral (m), 0 for none */
    double radiusIn;           /**< radius at the outer end of the entry spiral (m), 0 for infinite */
    double radiusOut;          /**< radius at the outer end of the exit spiral (m), 0 for infinite */
    unsigned char reserved[8]; /**< carried, never read */
} Intersection;

/** Element of the horizontal alignment. 80 bytes. */
typedef struct Element {
    int32_t type;          /**< 0 start record, 1 straight, 2 circular arc, 3 clothoid spiral */
    uint8_t turnDirection; /**< 0 turns left (azimuth decreases along it), any other value right */
    uint8_t padding1[3];   /**< gap */
    double startMileage;   /**< stake mileage of the start point (m), set when the chain is built */
    double startX;         /**< northing of the start point (m) */
    double startY;         /**< easting of the start point (m) */
    double startAzimuth;   /**< tangent azimuth at the start (degrees) */
    int32_t flag;          /**< set by element generation, cleared on the second piece of a split element */
    uint8_t padding2[4];   /**< gap */
    double secondAzimuth;  /**< repeats the azimuth in a start record, never read */
    double startRadius;    /**< arc: radius; spiral: radius at the start (m); below 1e-7 means infinite */
    double endRadius;      /**< spiral: radius at the end (m); below 1e-7 means infinite */
    double length;         /**< signed length (m), negative where the stake mileage decreases */
} Element;

/** Coordinate point of the alignment: every point begins an element that leads to the next one; arcs are the shorter
 *  ones. The last point ends the road, its radius is the end radius of a last spiral. 64 bytes. */
typedef struct Coordinate {
    int32_t type;          /**< type of the element that starts here: 1 straight, 2 arc, 3 spiral */
    int32_t turnDirection; /**< 0 left, any other value right */
    double x;              /**< northing (m) */
    double y;              /**< easting (m) */
    double radius;         /**< radius at this point (m), 0 for infinite */
    char name[32];         /**< shown, never interpreted */
} Coordinate;

/** Broken chain: a point where the stake mileage jumps. 16 bytes. */
typedef struct BrokenChain {
    double backMileage;  /**< stake mileage before the break (m) */
    double aheadMileage; /**< stake mileage of the same point after the break (m) */
} BrokenChain;

/** Grade-change point with its vertical curve. 96 bytes. */
typedef struct VerticalCurve {
    int32_t curveSign;       /**< derived: +1 crest, -1 sag, 0 none */
    uint8_t padding1[4];     /**< gap */
    double startMileage;     /**< stake mileage of the curve's start (m): derived in mode 0, given in mode 1 */
    int32_t startOccurrence; /**< its occurrence, -1 when not set */
    uint8_t padding2[4];     /**< gap */
    double endMileage;       /**< stake mileage of the curve's end (m): derived in mode 0, given in mode 1 */
    int32_t endOccurrence;   /**< its occurrence, -1 when not set */
    uint8_t padding3[4];     /**< gap */
    double mileage;          /**< stake mileage of the grade-change point (m) */
    int32_t occurrence;      /**< its occurrence; -1: the mileage is a continuous one */
    uint8_t padding4[4];     /**< gap */
    double elevation;        /**< elevation of the grade-change point (m) */
    double gradeOut;         /**< derived: grade to the next point (ratio) */
    double radius;           /**< curve radius (m), used in mode 0 */
    double distanceToNext;   /**< derived: horizontal distance to the next point (m) */
    double tangentLength;    /**< derived in mode 0: half the curve's length (m) */
} VerticalCurve;

/** Stake of the design stake list. 136 bytes. */
typedef struct StakeCoordinate {
    char name[32];             /**< main points: their label; others: the stake text, "K12+345.678" */
    char label[32];            /**< main-point code, empty for a regular stake */
    unsigned char reserved[8]; /**< carried, never read */
    double mileage;            /**< stake mileage (m) */
    int32_t occurrence;        /**< its occurrence */
    uint8_t padding1[4];       /**< gap */
    double x;                  /**< northing of the point on the centre line (m) */
    double y;                  /**< easting of the point on the centre line (m) */
    unsigned char extra[32];   /**< carried, never read */
} StakeCoordinate;

/** Plate of a cross section: a strip of carriageway, shoulder or verge. 128 bytes. */
typedef struct SectionPlate {
    char name[32];     /**< shown, never interpreted */
    char code[32];     /**< type keyword, free text on road plates */
    double width;      /**< horizontal width (m) */
    double offset;     /**< output: distance of the outer edge from the centre line (m) */
    double crossSlope; /**< cross slope (per cent), positive when the outer edge is higher */
    double step;       /**< vertical step at the plate's inner edge (m) */
    double x;          /**< output: northing of the outer edge (m) */
    double y;          /**< output: easting of the outer edge (m) */
    double height;     /**< output: design height of the outer edge (m) */
    double extra;      /**< carried and saved, never read */
} SectionPlate;

/** Entry of the section mileage index. 40 bytes. */
typedef struct SectionMileageIndex {
    char stakeText[32]; /**< stake text, made by the library */
    double mileage;     /**< stake mileage (m) */
} SectionMileageIndex;

/** Ease parameters of a spiral. 40 bytes. */
typedef struct EaseParam {
    double parameterSquared; /**< A squared, the clothoid parameter (square metres) */
    double deflection;       /**< angle that the whole spiral turns (degrees) */
    double shift;            /**< p: distance from the tangent to the circle of the smaller radius (m) */
    double tangentOffset;    /**< q: distance along the tangent to the foot of that circle's centre (m) */
    double chord;            /**< distance between the spiral's ends (m) */
} EaseParam;

/** An array of numbers across the boundary. In: items[0 .. count) is read, capacity is ignored, and a count of 0 or
 * less means an empty array. Out: the caller gives room for capacity records; all values are copied and count is set.
 * Where the room is too small nothing is copied, count is set to what is needed and the call is false: ask, grow, ask
 * again.
 */
typedef struct DoubleArray {
    double* items;    /**< the caller's memory */
    int32_t count;    /**< how many are there, or are needed */
    int32_t capacity; /**< how many there is room for */
} DoubleArray;

/** An array of integers across the boundary; see DoubleArray. */
typedef struct Int32Array {
    int32_t* items;   /**< the caller's memory */
    int32_t count;    /**< how many are there, or are needed */
    int32_t capacity; /**< how many there is room for */
} Int32Array;

/** An array of plates across the boundary; see DoubleArray. */
typedef struct SectionPlateArray {
    SectionPlate* items; /**< the caller's memory */
    int32_t count;       /**< how many are there, or are needed */
    int32_t capacity;    /**< how many there is room for */
} SectionPlateArray;

/** Why the last failed call on a road failed. Numbers that do not apply are -1 (integers) or 0. 40 bytes. */
typedef struct Failure {
    int32_t status; /**< a KestoStatus; DescribeStatus() gives it as a sentence */
    int32_t list;   /**< a KestoList: the list concerned */
    int32_t record; /**< 0-based index of the record concerned; a line number for KESTO_RECORDS_SKIPPED */
    int32_t limit;  /**< a KestoLimit: the limit that was passed */
    double value;   /**< the value that did not hold */
    double bound;   /**< the bound that it did not keep */
    double excess;  /**< by how much (same unit as value) */
} Failure;

/** What the last opening skipped or doubted in one line of the file. 120 bytes. */
typedef struct ReadingFinding {
    int32_t line;      /**< 1-based */
    int32_t reason;    /**< a KestoReadingReason: which of the other fields say something */
    int32_t otherLine; /**< another line that it is about; 0 for none */
    int32_t field;     /**< 1-based field in the line; 0 for none */
    int32_t status;    /**< the KestoStatus that refused a record; 0 for none */
    int32_t list;      /**< a KestoList: the list of the record; -1 for none */
    int32_t record;    /**< 0-based index of a stored record that it is about; -1 for none */
    int32_t limit;     /**< a KestoLimit that was passed; -1 for none */
    char section[32];  /**< keyword of the section; empty outside of sections */
    char text[32];     /**< what stands in the file, cut to 31 bytes */
    double value;      /**< see the reason */
    double bound;      /**< see the reason */
    double excess;     /**< how far value passes a limit (same unit) */
} ReadingFinding;

/* ------------------------------------------------------------------------------------- lifecycle and failures --- */

/** Makes an empty road with default settings.
 *  @return the handle, null when memory runs out. End it with EndRoadDesign(). */
KESTO_API RoadDesign* KESTO_CALL StartRoadDesign(void);

/** Ends a road and releases all that it owns. A null handle is ignored. */
KESTO_API void KESTO_CALL EndRoadDesign(RoadDesign* road);

/** Empties the design data and resets all settings; the transition-type tables of the change sections stay. A null
 *  handle is ignored. */
KESTO_API void KESTO_CALL ClearRoad(RoadDesign* road);

/** Why the last failed call on this road failed. Successful calls leave it as it is.
 *  @param failure out: the reason, untouched when there is none
 *  @return false: null argument, a frozen road, or no call has failed since the road was made or cleared */
KESTO_API bool KESTO_CALL GetLastFailure(RoadDesign* road, Failure* failure);

/** A status code as an English sentence.
 *  @param status a KestoStatus
 *  @return static text, never null; "unknown status" for any other number */
KESTO_API const char* KESTO_CALL DescribeStatus(int32_t status);

/** Version of the loaded library, "major.minor.patch": static text. */
KESTO_API const char* KESTO_CALL KestoRoadVersion(void);

/* ----------------------------------------------------------------------------------------------------- settings --- */

/** Start point and azimuth of the road: overwrites the start record at the head of the element list, or inserts one.
 *  @param x, y    start point (m)
 *  @param azimuth start azimuth (degrees)
 *  @return false: memory ran out */
KESTO_API bool KESTO_CALL SetStartInformation(RoadDesign* road, double x, double y, double azimuth);

/** Stores the mileage of the road's start (m); default 0. Takes effect when the chain is built. */
KESTO_API void KESTO_CALL SetStartMileage(RoadDesign* road, double mileage);

/** Stores the spacing of regular stakes (m); default 100. Less than 1, or no number, is stored as 1. */
KESTO_API void KESTO_CALL SetMileageInterval(RoadDesign* road, double interval);

/** Stores how regular stakes are made: 0 at whole multiples of the interval (default), 1 from each element's start. */
KESTO_API void KESTO_CALL SetMakeStakeType(RoadDesign* road, int32_t type);

/** Stores the text before stake mileages, "K" by default.
 *  @param prefix the text; may be null, which keeps the prefix as it is */
KESTO_API void KESTO_CALL SetMakeStakePerfix(RoadDesign* road, const char* prefix);

/** The text before stake mileages.
 *  @return text owned by the road, valid until the prefix changes or the road is cleared or ended; null: null handle */
KESTO_API const char* KESTO_CALL GetMakeStakePerfix(RoadDesign* road);

/** The text of a place as the stake list writes it, "K12+345.678": "-" in front of a negative mileage, "+" in front of
 * a later occurrence, which hides the minus. The place need not be on the road.
 *  @param mileage    stake mileage (m)
 *  @param occurrence which of the equal stake mileages, 0-based
 *  @param text       out: the text with its terminating zero, untouched on failure
 *  @param capacity   how many bytes there is room for
 *  @return false: null argument, mileage not finite, or too little room (value = the bytes needed) */
KESTO_API bool KESTO_CALL FormatStake(RoadDesign* road, double mileage, int32_t occurrence, char* text,
                                      int32_t capacity);
/** Reads what FormatStake() writes, and what people write for it: "K12+345.678", "12+345.678" and "12345.678" are the
 *  same, in any case of letters. The place need not be on the road.
 *  @param text       the text
 *  @param mileage    out: stake mileage (m)
 *  @param occurrence out: 1 for a stake text behind a "+", which names a later occurrence and not which one; else 0
 *  @return false: null argument, or the text is no mileage of this road (KESTO_NO_MILEAGE_IN_TEXT) */
KESTO_API bool KESTO_CALL ParseStake(RoadDesign* road, const char* text, double* mileage, int32_t* occurrence);

/** Make-stake type and stake spacing.
 *  @param interval out: spacing (m); may be null
 *  @return the make-stake type; 0 for a null handle */
KESTO_API int32_t KESTO_CALL GetMakeStakeInfo(RoadDesign* road, double* interval);

/** Stores the form of input that elements are made from: 0 intersections (default), 1 the elements themselves,
 *  2 coordinate points with curves, 3 coordinate points joined by straights. Stored unchecked. */
KESTO_API void KESTO_CALL SetRoadDesignMode(RoadDesign* road, int32_t mode);
/** The stored road design mode; 0 for a null handle. */
KESTO_API int32_t KESTO_CALL GetRoadDesignMode(RoadDesign* road);

/** Stores how vertical curves are given: 0 by radius (default), 1 by their two ends. Stored unchecked; on a curve of
 * any other mode there is no height. An end that is given off the road counts as a continuous mileage. */
KESTO_API void KESTO_CALL SetVerticalCurveMode(RoadDesign* road, int32_t mode);
/** The stored vertical curve mode; 0 for a null handle. */
KESTO_API int32_t KESTO_CALL GetVerticalCurveMode(RoadDesign* road);

/** Stores the side slope mode, 0 by default. Stored unchecked. */
KESTO_API void KESTO_CALL SetSideSlopeMode(RoadDesign* road, int32_t mode);
/** The stored side slope mode; 0 for a null handle. */
KESTO_API int32_t KESTO_CALL GetSideSlopeMode(RoadDesign* road);

/** Stores the section mode, 0 by default. Stored unchecked. */
KESTO_API void KESTO_CALL SetSectionMode(RoadDesign* road, int32_t mode);
/** The stored section mode; 0 for a null handle. */
KESTO_API int32_t KESTO_CALL GetSectionMode(RoadDesign* road);

/* ------------------------------------------------------------------------------------------------ intersections --- */

/** Number of intersections; 0 for a null handle. */
KESTO_API int32_t KESTO_CALL GetIntersectionCount(RoadDesign* road);
/** Adds an intersection.
 *  @param intersection the record, copied
 *  @param index        0 to count - 1 inserts before that record, any other value appends
 *  @return false: null argument, or memory ran out */
KESTO_API bool KESTO_CALL AddIntersection(RoadDesign* road, const Intersection* intersection, int32_t index);
/** Appends up to 16 intersections.
 *  @param count number of records; 0 or less adds nothing and is true
 *  @return false: more than 16, null array with a count above 0, or memory ran out; then nothing is added */
KESTO_API bool KESTO_CALL AddIntersectionList(RoadDesign* road, const Intersection* intersections, int32_t count);
/** Removes the record at the index. @return false: index out of range */
KESTO_API bool KESTO_CALL DeleteIntersection(RoadDesign* road, int32_t index);
/** Copies the record at the index out. @return false: null argument or index out of range */
KESTO_API bool KESTO_CALL GetIntersection(RoadDesign* road, int32_t index, Intersection* intersection);
/** Overwrites the record at the index. @return false: null argument or index out of range */
KESTO_API bool KESTO_CALL SetIntersection(RoadDesign* road, int32_t index, const Intersection* intersection);

/** Index of the intersection whose curve, from tangent point to tangent point, covers a stake mileage; both ends belong
 *  to the curve, and of two curves that touch the later one is told. Follows from the intersections as they are now.
 *  @param mileage    stake mileage (m)
 *  @param occurrence which of the equal stake mileages, 0-based
 *  @return -1: no curve there, another road design mode, a mileage not finite or not on the road, or no road can be
 *          built; 0 for a null handle */
KESTO_API int32_t KESTO_CALL GetIntersectionIndex(RoadDesign* road, double mileage, int32_t occurrence);

/* ----------------------------------------------------------------------------------------------------- elements --- */

/** Number of elements, the start record included; 0 for a null handle. */
KESTO_API int32_t KESTO_CALL GetElementCount(RoadDesign* road);
/** Adds an element; see AddIntersection(). @return false: null argument, or memory ran out */
KESTO_API bool KESTO_CALL AddElement(RoadDesign* road, const Element* element, int32_t index);
/** Appends up to 16 elements; see AddIntersectionList(). */
KESTO_API bool KESTO_CALL AddElementList(RoadDesign* road, const Element* elements, int32_t count);
/** Removes the record at the index. @return false: index out of range */
KESTO_API bool KESTO_CALL DeleteElement(RoadDesign* road, int32_t index);
/** Copies the record at the index out. @return false: null argument or index out of range */
KESTO_API bool KESTO_CALL GetElement(RoadDesign* road, int32_t index, Element* element);
/** Overwrites the record at the index. @return false: null argument or index out of range */
KESTO_API bool KESTO_CALL SetElement(RoadDesign* road, int32_t index, const Element* element);

/** Point and tangent azimuth on one element, which need not belong to the road.
 *  @param element  the element
 *  @param distance signed distance from its start (m), up to 1e-7 beyond its length
 *  @param x, y     out: the point (m); 0 when the element cannot be evaluated
 *  @param azimuth  out: the tangent azimuth (degrees); 0 when the element cannot be evaluated
 *  @return false: null argument (outputs untouched); distance not finite or beyond the element, a spiral between equal
 *          radii, an unknown type, a diverging series (outputs 0). A spiral whose radii are both infinite gives its
 *          start point at every distance. */
KESTO_API bool KESTO_CALL GetElementPositionAndAzimuth(RoadDesign* road, const Element* element, double distance,
                                                       double* x, double* y, double* azimuth);

/** Ease parameters of a spiral. The order of the radii does not matter; shift and tangent offset belong to the circle
 * of the smaller radius, in the tangent frame at the other end.
 *  @param startRadius, endRadius radii at its ends (m), below 1e-7 infinite
 *  @param length                 its length (m)
 *  @param parameters             out: the parameters, untouched on failure
 *  @return false: null argument, a number not finite, a length not above 0, both radii infinite, equal radii, or a
 *          spiral that winds too often to be evaluated */
KESTO_API bool KESTO_CALL CalcEaseParam(RoadDesign* road, double startRadius, double endRadius, double length,
                                        EaseParam* parameters);

/* -------------------------------------------------------------------------------------------- coordinate points --- */

/** Number of coordinate points; 0 for a null handle. */
KESTO_API int32_t KESTO_CALL GetCoordinateCount(RoadDesign* road);
/** Adds a coordinate point; see AddIntersection(). @return false: null argument, or memory ran out */
KESTO_API bool KESTO_CALL AddCoordinate(RoadDesign* road, const Coordinate* coordinate, int32_t index);
/** Appends up to 16 coordinate points; see AddIntersectionList(). */
KESTO_API bool KESTO_CALL AddCoordinateList(RoadDesign* road, const Coordinate* coordinates, int32_t count);
/** Removes the record at the index. @return false: index out of range */
KESTO_API bool KESTO_CALL DeleteCoordinate(RoadDesign* road, int32_t index);
/** Copies the record at the index out. @return false: null argument or index out of range */
KESTO_API bool KESTO_CALL GetCoordinate(RoadDesign* road, int32_t index, Coordinate* coordinate);
/** Overwrites the record at the index. @return false: null argument or index out of range */
KESTO_API bool KESTO_CALL SetCoordinate(RoadDesign* road, int32_t index, const Coordinate* coordinate);

/* ------------------------------------------------------------------------------------ broken chains and mileages ---
 */

/** Number of broken chains; 0 for a null handle. */
KESTO_API int32_t KESTO_CALL GetBrokenChainCount(RoadDesign* road);
/** Adds a broken chain in ascending order of back mileage. Takes effect when the chain is built.
 *  @return false: null argument, back mileage not finite or within 1e-7 of a stored one, or memory ran out */
KESTO_API bool KESTO_CALL AddBrokenChain(RoadDesign* road, const BrokenChain* chain);
/** Adds any number of broken chains. Records whose back mileages coincide within the array are added once.
 *  @param count number of records; 0 or less adds nothing and is true
 *  @return false: null array with a count above 0, a back mileage not finite or within 1e-7 of one stored before the
 *          call, or memory ran out; then nothing is added */
KESTO_API bool KESTO_CALL AddBrokenChainList(RoadDesign* road, const BrokenChain* chains, int32_t count);
/** Removes the record at the index. @return false: index out of range */
KESTO_API bool KESTO_CALL DeleteBrokenChain(RoadDesign* road, int32_t index);
/** Copies the record at the index out. @return false: null argument or index out of range */
KESTO_API bool KESTO_CALL GetBrokenChain(RoadDesign* road, int32_t index, BrokenChain* chain);
/** Overwrites the record at the index and sorts the list again by back mileage; duplicates are not looked for.
 *  @return false: null argument, index out of range or back mileage not finite */
KESTO_API bool KESTO_CALL SetBrokenChain(RoadDesign* road, int32_t index, const BrokenChain* chain);

/** Stake mileage to continuous mileage.
 *  @param mileage    in: stake mileage (m); out: continuous mileage (m), untouched on failure
 *  @param occurrence which of the equal stake mileages, 0-based
 *  @return false: null argument, mileage not finite, no road can be built, or no such occurrence (in a gap, beyond the
 *          road). A second or later occurrence of the mileage at the very end of the road is not found either. */
KESTO_API bool KESTO_CALL GetSrcMileage(RoadDesign* road, double* mileage, int32_t occurrence);

/** Stake mileage of the road's end. Builds nothing.
 *  @param startMileage out: the start mileage (m); may be null
 *  @return stake mileage at the end of the last element (m) when there is a stake list, else the start mileage; 0.0 for
 *          a null handle, with nothing written, and where that mileage is not finite */
KESTO_API double KESTO_CALL GetRoadMileage(RoadDesign* road, double* startMileage);

/* ------------------------------------------------------------------------------- positions and inverse projection ---
 */

/** Point at a stake mileage and offset, on the element chain as it stands: nothing is built.
 *  @param mileage    stake mileage (m)
 *  @param offset     offset from the centre line (m), positive to the right
 *  @param angle      angle from the tangent clockwise to the offset line (degrees); outside [0, 180], or no number,
 *                    it counts as 90
 *  @param x, y       out: the point (m)
 *  @param azimuth    out: azimuth of the centre line (degrees)
 *  @param occurrence which of the equal stake mileages, 0-based
 *  @return false: null argument, a number not finite, no element covers the mileage in this occurrence (outputs
 *          untouched), or that element cannot be evaluated (outputs 0) */
KESTO_API bool KESTO_CALL GetPositionAndAzimuth(RoadDesign* road, double mileage, double offset, double angle,
                                                double* x, double* y, double* azimuth, int32_t occurrence);

/** Stake mileage and offset of a point, searched on the whole road.
 *  @param x, y       the point (m)
 *  @param mileage    out: stake mileage of the foot (m)
 *  @param offset     out: signed offset (m), positive to the right; at a kink or beyond the ends the plain distance
 *  @param occurrence out: occurrence of the mileage
 *  @return false: null argument, a number not finite, no road can be built (outputs untouched), or no element admits
 *          the point (then the road's end is written) */
KESTO_API bool KESTO_CALL GetMileageAndOffset(RoadDesign* road, double x, double y, double* mileage, double* offset,
                                              int32_t* occurrence);

/** Stake mileage and offset of a point, searched between two stake mileages. Where a limit itself is the nearest point
 *  it becomes the result, with the plain distance. A limit that is not on the road is replaced by the road's end on its
 *  side.
 *  @param x, y                       the point (m)
 *  @param lower, lowerOccurrence     lower limit: stake mileage (m) and its occurrence
 *  @param upper, upperOccurrence     upper limit: stake mileage (m) and its occurrence
 *  @param mileage, offset, occurrence out: as in GetMileageAndOffset()
 *  @return false: as GetMileageAndOffset(); where no element admits the point the upper limit is written (the lower
 *          one where the upper one has no point) */
KESTO_API bool KESTO_CALL GetMileAndOffsetInLim(RoadDesign* road, double x, double y, double lower,
                                                int32_t lowerOccurrence, double upper, int32_t upperOccurrence,
                                                double* mileage, double* offset, int32_t* occurrence);

/** The design stake nearest to a point's foot on the road; on a tie the later one, beyond the list its nearer end.
 *  @param x, y       the point (m)
 *  @param stake      out: the stake, untouched on failure
 *  @param occurrence out: occurrence of the foot's mileage; written as GetMileageAndOffset() does
 *  @return false: as GetMileageAndOffset(), or there is no stake list */
KESTO_API bool KESTO_CALL GetNearbyStakeCoordinate(RoadDesign* road, double x, double y, StakeCoordinate* stake,
                                                   int32_t* occurrence);

/* --------------------------------------------------------------------------------------------------- design run --- */

/** Builds the element chain anew from the elements as they stand, applying the broken chains. The stake list is kept.
 *  @return false: fewer than two elements, no start record, an element that cannot be evaluated, or memory ran out;
 *          the elements are then as before */
KESTO_API bool KESTO_CALL UpdateData(RoadDesign* road);

/** Builds what a query would build: the elements by the road design mode and the chain, where the total length is not
 *  known yet; the stakes are then discarded. A road that is current is left as it is, and a frozen one always is.
 *  @return false: no road can be built */
KESTO_API bool KESTO_CALL MakeCurrent(RoadDesign* road);

/** The design run: makes the elements by the road design mode, builds the chain, joins every element to the end of the
 *  one before, makes and names the stakes, derives the vertical curves.
 *  @return false: the road could not be built, or not every stake could be made; the stakes made so far stay, unnamed,
 *          and the vertical curves of a road that could be built are derived all the same */
KESTO_API bool KESTO_CALL DesignRoad(RoadDesign* road);

/** Number of stakes in the design stake list; 0 for a null handle. */
KESTO_API int32_t KESTO_CALL GetStakeCoordinateCount(RoadDesign* road);
/** Copies the stake at the index out. @return false: null argument or index out of range */
KESTO_API bool KESTO_CALL GetStakeCoordinate(RoadDesign* road, int32_t index, StakeCoordinate* stake);

/* --------------------------------------------------------------------------------------------- vertical profile --- */

/** Number of grade-change points; 0 for a null handle. */
KESTO_API int32_t KESTO_CALL GetVerticalCurveCount(RoadDesign* road);
/** Adds a grade-change point in ascending order along the road. Mileages that are not on the road count as continuous;
 *  to tell, the chain is built when it is not current, which discards the stake list.
 *  @return false: null argument, mileage not finite or within 1e-7 of a stored point, or memory ran out */
KESTO_API bool KESTO_CALL AddVerticalCurve(RoadDesign* road, const VerticalCurve* curve);
/** Adds up to 16 grade-change points, all or none.
 *  @param count number of records, 0 to 16
 *  @return false: count below 0 or above 16, null array, or one record would be refused; then nothing is added */
KESTO_API bool KESTO_CALL AddVerticalCurveList(RoadDesign* road, const VerticalCurve* curves, int32_t count);
/** Removes the record at the index. @return false: index out of range */
KESTO_API bool KESTO_CALL DeleteVerticalCurve(RoadDesign* road, int32_t index);
/** Copies the record at the index out, derived fields as of the last derivation.
 *  @return false: null argument or index out of range */
KESTO_API bool KESTO_CALL GetVerticalCurve(RoadDesign* road, int32_t index, VerticalCurve* curve);
/** Overwrites the record at the index, in its place. @return false: null argument, index out of range or mileage not
 *  finite */
KESTO_API bool KESTO_CALL SetVerticalCurve(RoadDesign* road, int32_t index, const VerticalCurve* curve);

/* ------------------------------------------------------------------------------------ cross section: plates --- */

/* Sides: 0 left, 1 right, looking towards increasing mileage. The plates of a side are indexed from the centre line
 * outwards; together they are the standard section, which holds wherever no change section alters it. */

/** Number of plates of a side; 0 for an unknown side or a null handle. */
KESTO_API int32_t KESTO_CALL GetStandardSectionPlateCount(RoadDesign* road, int32_t side);
/** Adds a plate, and its own cross slope or width to every change section of the side that lies on the road: the
 *  section changes nowhere.
 *  @param plate the record, copied
 *  @param side  0 left, 1 right
 *  @param index 0 to count - 1 inserts before that plate, any other value appends
 *  @return false: null argument, unknown side, or memory ran out */
KESTO_API bool KESTO_CALL AddStandardSectionPlate(RoadDesign* road, const SectionPlate* plate, int32_t side,
                                                  int32_t index);
/** Appends plates to those that are there and discards the change sections of the side.
 *  @param count number of records; 0 or less appends nothing but still discards the change sections
 *  @return false: null array, unknown side, or memory ran out; then nothing is changed */
KESTO_API bool KESTO_CALL AddStandardSectionPlateList(RoadDesign* road, const SectionPlate* plates, int32_t count,
                                                      int32_t side);
/** Removes a plate, and its values from the change sections of the side that lie on the road. With the last plate the
 *  side's change sections go. @return false: unknown side or index out of range */
KESTO_API bool KESTO_CALL DeleteStandardSectionPlate(RoadDesign* road, int32_t side, int32_t index);
/** Copies the plate at the index out. @return false: null argument, unknown side or index out of range */
KESTO_API bool KESTO_CALL GetStandardSectionPlate(RoadDesign* road, int32_t side, int32_t index, SectionPlate* plate);
/** Overwrites the plate at the index. @return false: null argument, unknown side or index out of range */
KESTO_API bool KESTO_CALL SetStandardSectionPlate(RoadDesign* road, int32_t side, int32_t index,
                                                  const SectionPlate* plate);
/** Copies all plates of a side out. @return false: null argument, unknown side, no plates, or too little room */
KESTO_API bool KESTO_CALL GetStandardSection(RoadDesign* road, int32_t side, SectionPlateArray* plates);

/** Number of entries of the section mileage index; 0 for a null handle. */
KESTO_API int32_t KESTO_CALL GetSectionMileageIndexCount(RoadDesign* road);
/** Adds a mileage to the section mileage index, ascending. Its stake text is made by the library, without a sign.
 *  @return false: null argument, mileage not finite, or memory ran out */
KESTO_API bool KESTO_CALL AddSectionMileageIndex(RoadDesign* road, const SectionMileageIndex* entry);
/** Removes the entry at the index. @return false: index out of range */
KESTO_API bool KESTO_CALL DeleteSectionMileageIndex(RoadDesign* road, int32_t index);
/** Copies the entry at the index out. @return false: null argument or index out of range */
KESTO_API bool KESTO_CALL GetSectionMileageIndex(RoadDesign* road, int32_t index, SectionMileageIndex* entry);
/** Overwrites the entry at the index and sorts the index again. @return false: null argument, index out of range or
 *  mileage not finite */
KESTO_API bool KESTO_CALL SetSectionMileageIndex(RoadDesign* road, int32_t index, const SectionMileageIndex* entry);

/* --------------------------------------------------------------------------- cross section: change sections --- */

/* Kinds: 0 heightening (the values are cross slopes, per cent), 1 widening (the values are widths, m). Between two
 * change sections, and from the road's start to the first one, every plate's value passes over by the transition type
 * of the later one: 0 linear, 1 cubic with level tangents, 2 fourth degree; any other type keeps the standard value. */

/** Number of change sections; 0 for an unknown side or kind, or a null handle. */
KESTO_API int32_t KESTO_CALL GetChangeSectionCount(RoadDesign* road, int32_t side, int32_t kind);
/** Adds a change section; every flag is 1.
 *  @param mileage    stake mileage (m)
 *  @param values     one per plate of the side, from the centre line outwards: per cent or m
 *  @param occurrence which of the equal stake mileages, 0-based
 *  @param type       transition type of the stretch that ends here, stored unchecked
 *  @return false: null argument, unknown side or kind, mileage not on the road, not one value for each plate, a change
 *          section at this very place, or memory ran out */
KESTO_API bool KESTO_CALL AddChangeSection(RoadDesign* road, double mileage, int32_t side, int32_t kind,
                                           const DoubleArray* values, int32_t occurrence, int32_t type);
/** AddChangeSection() with the caller's flags, one per plate: carried, never read. */
KESTO_API bool KESTO_CALL AddChangeSection2(RoadDesign* road, double mileage, int32_t side, int32_t kind,
                                            const DoubleArray* values, const Int32Array* flags, int32_t occurrence,
                                            int32_t type);
/** AddChangeSection() with a plain array of values. */
KESTO_API bool KESTO_CALL AddChangeSectionList(RoadDesign* road, double mileage, int32_t side, int32_t kind,
                                               const double* values, int32_t count, int32_t occurrence, int32_t type);
/** AddChangeSection2() with plain arrays of values and flags, both of the same count. */
KESTO_API bool KESTO_CALL AddChangeSectionList2(RoadDesign* road, double mileage, int32_t side, int32_t kind,
                                                const double* values, const int32_t* flags, int32_t count,
                                                int32_t occurrence, int32_t type);
/** Removes the change section at the index (ascending along the road). Its transition type stays in the type table.
 *  @return false: unknown side or kind, or index out of range */
KESTO_API bool KESTO_CALL DeleteChangeSection(RoadDesign* road, int32_t side, int32_t kind, int32_t index);
/** Copies the change section at the index out.
 *  @param mileage, occurrence out: stake mileage (m) and its occurrence
 *  @param values              out: one per plate
 *  @return false: null argument, unknown side or kind, index out of range, the place is not on the road, or too little
 *          room (only the counts are then written) */
KESTO_API bool KESTO_CALL GetChangeSection(RoadDesign* road, int32_t side, int32_t kind, int32_t index, double* mileage,
                                           DoubleArray* values, int32_t* occurrence);
/** GetChangeSection() with the flags. */
KESTO_API bool KESTO_CALL GetChangeSection2(RoadDesign* road, int32_t side, int32_t kind, int32_t index,
                                            double* mileage, DoubleArray* values, Int32Array* flags,
                                            int32_t* occurrence);
/** Replaces the change section at the index, which may move; every flag is 1. The transition type of a place that it
 *  leaves stays in the type table.
 *  @return false: as AddChangeSection(), or index out of range */
KESTO_API bool KESTO_CALL SetChangeSection(RoadDesign* road, int32_t side, int32_t kind, int32_t index, double mileage,
                                           const DoubleArray* values, int32_t occurrence, int32_t type);
/** SetChangeSection() with the caller's flags. */
KESTO_API bool KESTO_CALL SetChangeSection2(RoadDesign* road, int32_t side, int32_t kind, int32_t index, double mileage,
                                            const DoubleArray* values, const Int32Array* flags, int32_t occurrence,
                                            int32_t type);
/** Transition type at an index of the type table, which keeps the types of places whose change section is gone.
 *  @param type out: 0 for an index past the table; untouched for an unknown side, which counts as success
 *  @return false: null argument, unknown kind or negative index */
KESTO_API bool KESTO_CALL GetChangeSectionType(RoadDesign* road, int32_t side, int32_t kind, int32_t index,
                                               int32_t* type);
/** Overwrites a transition type by its index in the type table. @return false: unknown side or kind, or index out of
 *  range */
KESTO_API bool KESTO_CALL SetChangeSectionType(RoadDesign* road, int32_t side, int32_t kind, int32_t index,
                                               int32_t type);

/* ------------------------------------------------------------------------------- cross section: the road side --- */

/** The cross section of one side at a stake mileage, with the outer edge of every plate: offset (positive on both
 *  sides), point and design height. A plate's step stands at its inner edge.
 *  @param mileage    stake mileage (m)
 *  @param occurrence which of the equal stake mileages, 0-based
 *  @param side       0 left, 1 right
 *  @param plates     out: the plates from the centre line outwards, heights counted from 0 where there is no
 * grade-change point; untouched on failure but for the count where the room is too small
 *  @return false: null argument, mileage not finite or not on the road, unknown side or section mode, no plates, no
 *          stake list (run DesignRoad() first), no height of the centre line, or too little room */
KESTO_API bool KESTO_CALL GetRoadSide(RoadDesign* road, double mileage, int32_t occurrence, int32_t side,
                                      SectionPlateArray* plates);
/** GetRoadSide() with heights counted from the centre line as 0, for roads without a profile. */
KESTO_API bool KESTO_CALL GetRoadSideNoHeight(RoadDesign* road, double mileage, int32_t occurrence, int32_t side,
                                              SectionPlateArray* plates);

/** Design height at a stake mileage and offset. The profile is level before its first and after its last point; away
 *  from the centre line the height is that on the plate that holds the offset, the inner one at an edge.
 *  @param mileage    stake mileage (m)
 *  @param occurrence which of the equal stake mileages, 0-based
 *  @param offset     offset from the centre line (m), positive to the right
 *  @param height     out: design height (m)
 *  @return true with a height; without grade-change points the centre line lies at 0. false: null argument, a number
 *          not finite, no road can be built, no section holds the offset (output untouched), or the centre line has no
 *          height there: no such occurrence, off the road (output 0) */
KESTO_API bool KESTO_CALL GetHeight(RoadDesign* road, double mileage, int32_t occurrence, double offset,
                                    double* height);

/* ------------------------------------------------------------------------------------------------ many points --- */

/* A batch answers many rows in one call, each to the bit as the function for one point does on a current road. The
 * columns are arrays of the caller, each with its step: the distance in bytes from one row to the next (8 for a plain
 * array of doubles, the size of the record for a field of an array of records, below 0 to walk backwards). Rows need
 * not be aligned. An input with a step of 0 repeats one value; in an output with a step of 0 the last row stays. An
 * output may take the place of an input column; other columns that overlap give what the rows before have left there.
 *
 * The road is made current once, before the first row; after that nothing is allocated. Where the chain is not built
 * yet, two functions for one point differ: GetPositionAndAzimuth() builds nothing and reads the elements as they stand,
 * and GetHeight() on the centre line of a road without grade-change points is 0 on any road. Rows fail alone: `status`
 * gets 0 or the KestoStatus of the row, and the outputs of a failed row are what the function for one point leaves,
 * mostly untouched. Failed rows leave nothing in GetLastFailure(), and the batch is true even if every row failed. It
 * is false for a null handle, a null column that is needed, a negative count, where no road can be built, and where
 * memory runs out while the profile is derived (GetHeightBatch() alone, on a current road too): nothing is written
 * then. A count of 0 is true and touches nothing. */

/** GetMileageAndOffset() for many points.
 *  @param count                         number of rows
 *  @param x, xStep, y, yStep            the points (m)
 *  @param mileage, mileageStep          out: stake mileage of the foot (m)
 *  @param offset, offsetStep            out: offset (m), positive to the right
 *  @param occurrence, occurrenceStep    out: occurrence of the mileage
 *  @param status, statusStep            out: 0, or why the row has no answer. Where no element admits the point (28)
 *                                       the road's end is written; otherwise a failed row is untouched
 *  @return false: see above */
KESTO_API bool KESTO_CALL GetMileageAndOffsetBatch(RoadDesign* road, int32_t count, const double* x, int32_t xStep,
                                                   const double* y, int32_t yStep, double* mileage, int32_t mileageStep,
                                                   double* offset, int32_t offsetStep, int32_t* occurrence,
                                                   int32_t occurrenceStep, uint8_t* status, int32_t statusStep);

/** GetPositionAndAzimuth() for many places, on a road that is made current first.
 *  @param count                         number of rows
 *  @param mileage, mileageStep          stake mileages (m)
 *  @param occurrence, occurrenceStep    which of the equal stake mileages; null: 0
 *  @param offset, offsetStep            offsets (m), positive to the right; null: 0
 *  @param angle, angleStep              angles from the tangent clockwise to the offset line (degrees); null: 90
 *  @param x, xStep, y, yStep            out: the points (m)
 *  @param azimuth, azimuthStep          out: azimuth of the centre line (degrees)
 *  @param status, statusStep            out: 0, or why the row has no answer. The row is 0 where the element cannot be
 *                                       evaluated; otherwise a failed row is untouched
 *  @return false: see above */
KESTO_API bool KESTO_CALL GetPositionAndAzimuthBatch(RoadDesign* road, int32_t count, const double* mileage,
                                                     int32_t mileageStep, const int32_t* occurrence,
                                                     int32_t occurrenceStep, const double* offset, int32_t offsetStep,
                                                     const double* angle, int32_t angleStep, double* x, int32_t xStep,
                                                     double* y, int32_t yStep, double* azimuth, int32_t azimuthStep,
                                                     uint8_t* status, int32_t statusStep);

/** GetHeight() for many places.
 *  @param count                         number of rows
 *  @param mileage, mileageStep          stake mileages (m)
 *  @param occurrence, occurrenceStep    which of the equal stake mileages; null: 0
 *  @param offset, offsetStep            offsets from the centre line (m), positive to the right; null: 0
 *  @param height, heightStep            out: design heights (m)
 *  @param status, statusStep            out: 0, or why the row has no answer. The height is 0 where the centre line has
 *                                       none; otherwise a failed row is untouched
 *  @return false: see above */
KESTO_API bool KESTO_CALL GetHeightBatch(RoadDesign* road, int32_t count, const double* mileage, int32_t mileageStep,
                                         const int32_t* occurrence, int32_t occurrenceStep, const double* offset,
                                         int32_t offsetStep, double* height, int32_t heightStep, uint8_t* status,
                                         int32_t statusStep);

/* ----------------------------------------------------------------------------------------------- many readers --- */

/** A frozen copy of a road as it stands, with everything built that queries derive. The road is made current and its
 *  vertical curves are derived, as its next query would; later edits of it do not reach the copy.
 *
 *  Every query answers on the copy as on the road at that moment, to the bit, and from any number of threads at the
 *  same time. Whatever edits fails and changes nothing: setters, lists, ClearRoad(), DesignRoad() and UpdateData(),
 *  and the reading of files (KESTO_ROAD_IS_FROZEN). The copy keeps no failure: GetLastFailure() of it is false, and
 *  who needs the reason asks a batch with one row. Files are written from it as from any road.
 *  @return the copy, to be ended by EndRoadDesign() when no thread asks it any more; null for a null handle, where no
 *          road can be built and where memory runs out */
KESTO_API RoadDesign* KESTO_CALL FreezeRoad(RoadDesign* road);

/** Whether a road was made by FreezeRoad(); false for a null handle. */
KESTO_API bool KESTO_CALL IsFrozenRoad(RoadDesign* road);

/* -------------------------------------------------------------------------------------------------------- files --- */

/** Saves the road as a project file. The earlier file stays whole until the new one is complete.
 *  @param path file path; ".road" at its end, in any case, is written with small letters ("X.ROAD" becomes "X.road"),
 *              any other extension gets ".road" appended
 *  @return 0; 12 null handle or path, 15 not written whole, 16 out of memory */
KESTO_API int32_t KESTO_CALL SaveProject(RoadDesign* road, const char* path);

/** Saves the stretch between two places of the road as a project file of its own: elements cut at both ends, the broken
 *  chains in between, the grade-change points that its heights need, the cross sections. Points, heights and sections
 *  are those of the whole road, at the same stake mileages; occurrences are counted anew within the part. Transitions
 *  of cross sections that are cut and not linear become rows of linear ones, within 1e-6 (per cent or m) as long as the
 *  values differ by up to 5000. Section mileages, which know no occurrence, come along where their stake mileage occurs
 *  in the part. Radii of 1e9 m and more have no room in a file and become infinite: an arc of 450 m then ends up to
 *  0.1 mm beside. The road itself is made current, and otherwise left as it is.
 *  @param path                            as for SaveProject()
 *  @param startMileage, endMileage        stake mileages (m). Within 1e-7 m of an element's end they are that end, and
 *                                         a stretch must be longer than that
 *  @param startOccurrence, endOccurrence  which of the equal stake mileages, 0-based
 *  @return 0; 12 null handle or path, 15 not written whole, 16 out of memory, or the design run's own code (1 to 7)
 *          where no road can be built, here or from the part's rounded numbers. 17: a place is not on the road (the
 *          numbers of GetLastFailure() are those of 25 or 26), the end is not behind the start (value and bound: their
 *          continuous mileages), or no list of broken chains gives the stretch its stake mileages (list: that of
 *          broken chains). Nothing is written then. */
KESTO_API int32_t KESTO_CALL SavePartProject(RoadDesign* road, const char* path, double startMileage, double endMileage,
                                             int32_t startOccurrence, int32_t endOccurrence);

/** Opens a project file: its data replace the road's design data. No design run.
 *  @param path file path ending in ".road"
 *  @return 0; 12 null handle or path, 13 cannot be opened, 14 wrong extension, 16 out of memory: the road is then as
 *          before. Records that cannot be read are skipped: GetLastFailure() then tells how many (18). */
KESTO_API int32_t KESTO_CALL OpenProject(RoadDesign* road, const char* path);

/** OpenProject(), then DesignRoad().
 *  @return as OpenProject(), or the design run's own code (1 to 9); what was read is then kept */
KESTO_API int32_t KESTO_CALL OpenProject2(RoadDesign* road, const char* path);

/** OpenProject() with the content of a project file in place of its path: for roads that come over a network or out of
 *  a database.
 *  @param bytes the content
 *  @param size  its length in bytes
 *  @return 0; 12 null handle or null bytes, 16 out of memory (or more than 2^30 bytes), 23 negative size: the road is
 *          then as before. Records that cannot be read are skipped: GetLastFailure() then tells how many (18). */
KESTO_API int32_t KESTO_CALL OpenProjectFromMemory(RoadDesign* road, const char* bytes, int64_t size);

/** Number of findings of the last opening: what it skipped or doubted. They stay until the next opening or ClearRoad(),
 *  whatever is edited meanwhile. 0 for a null handle. */
KESTO_API int32_t KESTO_CALL GetReadingFindingCount(RoadDesign* road);
/** Copies a finding of the last opening out. They stand in the order of the file; of more than 1000 the first ones met
 *  are kept, the others only counted.
 *  @param index   0-based
 *  @param finding out: the finding, untouched on failure
 *  @return false: null argument, or an index that addresses none of those that are kept (bound = how many are) */
KESTO_API bool KESTO_CALL GetReadingFinding(RoadDesign* road, int32_t index, ReadingFinding* finding);
/** The line of the file that a record stood in when the road was opened; of several, its first one. Later edits move
 *  records, and not these lines.
 *  @param list  a KestoList
 *  @param key   the side of plates, 2 * side + kind of change sections, 0 for all other lists
 *  @param index 0-based index of the record after the opening; -1 asks for the keyword of the list's first section
 *  @param line  out: 1-based line, untouched on failure
 *  @return false: null argument, no record with this index was read, or for -1 no section */
KESTO_API bool KESTO_CALL GetRecordLine(RoadDesign* road, int32_t list, int32_t key, int32_t index, int32_t* line);

/** Copies out what SaveProject() writes into a file, byte for byte.
 *  @param bytes    out: the content, without a zero at its end; may be null where the capacity is 0
 *  @param capacity how many bytes there is room for
 *  @param size     out: how many bytes the content has
 *  @return 0; 12 null handle or null size, 15 not one that could be read again, 16 out of memory, 37 too little room:
 *          only the size is then written */
KESTO_API int32_t KESTO_CALL SaveProjectToMemory(RoadDesign* road, char* bytes, int64_t capacity, int64_t* size);

/** SaveProject() for a water project: the extension is ".watx", and the section mileage index is left out.
 *  @param path file path; the same with ".watx" as SaveProject() with ".road"
 *  @return as SaveProject() */
KESTO_API int32_t KESTO_CALL SaveWaterProject(RoadDesign* road, const char* path);
/** OpenProject() for a water project.
 *  @param path file path ending in ".watx"
 *  @return as OpenProject() */
KESTO_API int32_t KESTO_CALL OpenWaterProject(RoadDesign* road, const char* path);

/** Runs the design, then writes alignment and profile as a LandXML 1.1 document. The earlier file stays whole until the
 *  new one is complete. Numbers in attributes have six significant digits, points six decimals.
 *  @param path file path, taken as it stands: no extension is added
 *  @return 0; 12 null handle or path, 15 not written whole, 16 out of memory, 30 a number of the road is not finite
 *          (the last failure names the record), or the design run's own code (1 to 9); nothing is written then */
KESTO_API int32_t KESTO_CALL ExportLandXMLFile(RoadDesign* road, const char* path);

#ifdef __cplusplus
}
#endif

#include "kesto_road/layout.h"

#endif

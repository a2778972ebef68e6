/// \file
/// The texts that the bridge throws. Hosts show them and compare them, so that each byte counts.
///
/// The Chinese ones are in GBK, which Windows calls code page 936: two bytes for each character, both written
/// as escapes here because the sources are ASCII. The words above each text are its translation. Other
/// encodings would read the bytes as nonsense, and a host without code page 936 has to convert them.
#pragma once

namespace qev::message {

/// nested too deep
inline constexpr char kTooDeep[] = "\xB1\xED\xB8\xF1\xC7\xB6\xCC\xD7\xCC\xAB\xC9\xEE";
/// not a table
inline constexpr char kNoTable[] = "\xB2\xBB\xCA\xC7\xB1\xED";
/// outside the legal range, by index and by name. They differ by a blank, and hosts compare them.
inline constexpr char kRangeByIndex[] =
    "\xB2\xBB\xD4\xDA\xBA\xCF\xB7\xA8\xD6\xB5\xB7\xB6\xCE\xA7[%g, %g]\xC4\xDA";
inline constexpr char kRangeByName[] =
    "\xB2\xBB\xD4\xDA\xBA\xCF\xB7\xA8\xD6\xB5\xB7\xB6\xCE\xA7[%g,%g]\xC4\xDA";
/// unrecognised enumeration name
inline constexpr char kUnknownName[] = "\xCE\xDE\xB7\xA8\xCA\xB6\xB1\xF0\xB5\xC4\xC3\xB6\xBE\xD9\xC3\xFB";
/// the value matches no enumeration name
inline constexpr char kUnnamedValue[] =
    "\xB8\xC3\xD6\xB5\xCE\xDE\xB7\xA8\xC6\xA5\xC5\xE4\xC3\xB6\xBE\xD9\xC3\xFB";
/// string too long
inline constexpr char kTextTooLong[] = "\xD7\xD6\xB7\xFB\xB4\xAE\xCC\xAB\xB3\xA4";
/// no function given
inline constexpr char kNoFunction[] = "\xC3\xBB\xD3\xD0\xD6\xB8\xB6\xA8\xBA\xAF\xCA\xFD";
/// StartCall's argument is not a table
inline constexpr char kStartCallNoTable[] =
    "StartCall\xB2\xCE\xCA\xFD\xB2\xBB\xCA\xC7\xD2\xBB\xB8\xF6\xB1\xED";
/// function not found
inline constexpr char kFunctionNotFound[] = "\xD5\xD2\xB2\xBB\xB5\xBD\xBA\xAF\xCA\xFD";

// English ones. "Failded" and "Unknow" are misspelt since hosts have known them.
inline constexpr char kPopNoBoolean[] = "Pop Failded: not a boolean.";
inline constexpr char kPopNoNumber[] = "Pop Failded: not a number.";
inline constexpr char kPopNoText[] = "Pop Failded: not a String.";
inline constexpr char kWrongParameter[] = "CallLuaFunc: wrong parameter.";
inline constexpr char kWrongResult[] = "CallLuaFunc: Return wrong parameter.";
inline constexpr char kBufferTooShort[] = "CallLuaFunc: Input string length too short.";
inline constexpr char kUnknownKeyType[] = "Lua Unknow key type!";
inline constexpr char kUnknownValueType[] = "Lua Unknow value type!";
inline constexpr char kEnterFailed[] = "Enter Lua Table Error!";

// What Lua says in the same case.
inline constexpr char kNoMemory[] = "not enough memory";
inline constexpr char kStackFull[] = "stack overflow";

} // namespace qev::message

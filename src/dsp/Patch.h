#pragma once

#include <string_view>

namespace veltra::CommonUtils {

// The pitch-detection and reference-tone patch, in Pure Data's file format.
//
// Pitch: microphone channel 1 passes a 50 dB level gate into two sigmund~
// trackers (4096 and 2048 points, one frame per 256 samples). A tracker's
// frequency counts only when its own envelope is loud enough (above 50 dB for
// the long one, above 65 dB for the short one, so the faster tracker wins
// only on clearly loud notes); the short candidate wins when it is above 1 Hz.
// One value per frame goes to the send "frequency": Hz, or 0 for no pitch.
//
// Tone: "midinote" (a MIDI note number) tunes a sine; a bang on "trigger"
// ramps it up to 1 in 50 ms, a bang on "stop" down to 0 in 100 ms; it plays
// on both output channels.
//
// The text is written to disk byte for byte and opened by libpd, so every
// byte matters, including the two-line records that Pd wraps itself.
inline constexpr std::string_view patch =
R"pd(#N canvas 0 100 1440 742 10;
#X obj 64 62 env~;
#X obj 72 221 *~;
#X obj 94 119 sel 1;
#X msg 121 148 1;
#X obj 29 18 adc~ 1;
#X floatatom 81 326 5 0 0 0 - - - 0;
#X obj 81 363 mtof;
#X floatatom 144 568 5 0 0 1 s:frequency - frequency 0;
#X floatatom 83 397 5 0 0 0 - - - 0;
#X floatatom 355 326 5 0 0 0 - - - 0;
#X obj 355 363 mtof;
#X floatatom 355 398 5 0 0 0 - - - 0;
#X obj 249 18 bng 15 250 50 0 empty trigger r:trigger 17 7 0 10 #fcfcfc
#000000 #000000;
#X obj 358 167 *~;
#X obj 351 221 dac~;
#X floatatom 422 18 5 0 0 1 r:midinote midinote - 0;
#X obj 422 55 mtof;
#X obj 422 119 osc~ 220;
#X obj 342 18 bng 15 250 50 0 empty stop r:stop 17 7 0 10 #fcfcfc #000000
#000000;
#X obj 304 119 vline~;
#X msg 342 55 0 100;
#X msg 249 55 1 50;
#X obj 64 100 < 50;
#X obj 143 525 expr if ($f2>1 \, $f2 \, $f1);
#X floatatom 242 327 5 0 0 0 - - - 0;
#X floatatom 147 394 5 0 0 0 - - - 0;
#X floatatom 545 316 5 0 0 0 - - - 0;
#X floatatom 437 400 5 0 0 0 - - - 0;
#X obj 81 277 sigmund~ -npts 4096 -hop 256 -npeak 20 pitch env, f
32;
#X obj 356 268 sigmund~ -npts 2048 -hop 256 -npeak 20 pitch env, f
32;
#X obj 306 468 expr if($f2==1 \, $f1 \, $f3);
#X msg 362 428 0;
#X obj 51 473 expr if($f2==1 \, $f1 \, $f3);
#X msg 107 433 0;
#X obj 545 336 > 65;
#X msg 79 159 0;
#X obj 242 347 > 50;
#X connect 0 0 22 0;
#X connect 1 0 29 0;
#X connect 1 0 28 0;
#X connect 2 0 35 0;
#X connect 2 1 3 0;
#X connect 3 0 1 1;
#X connect 4 0 0 0;
#X connect 4 0 1 0;
#X connect 5 0 6 0;
#X connect 6 0 8 0;
#X connect 8 0 33 0;
#X connect 8 0 32 0;
#X connect 9 0 10 0;
#X connect 10 0 11 0;
#X connect 11 0 31 0;
#X connect 11 0 30 0;
#X connect 12 0 21 0;
#X connect 13 0 14 0;
#X connect 13 0 14 1;
#X connect 15 0 16 0;
#X connect 16 0 17 0;
#X connect 17 0 13 1;
#X connect 18 0 20 0;
#X connect 19 0 13 0;
#X connect 20 0 19 0;
#X connect 21 0 19 0;
#X connect 22 0 2 0;
#X connect 23 0 7 0;
#X connect 24 0 36 0;
#X connect 25 0 32 1;
#X connect 26 0 34 0;
#X connect 27 0 30 1;
#X connect 28 0 5 0;
#X connect 28 1 24 0;
#X connect 29 0 9 0;
#X connect 29 1 26 0;
#X connect 30 0 23 1;
#X connect 31 0 30 2;
#X connect 32 0 23 0;
#X connect 33 0 32 2;
#X connect 34 0 27 0;
#X connect 35 0 1 1;
#X connect 36 0 25 0;
)pd";

} // namespace veltra::CommonUtils

#!/bin/sed -f
# The headers document their members with plain line comments above a declaration and after a
# member ("int x; // what"); this turns both into Doxygen's comments for the API reference.
s|^\([[:space:]]*\)//\([^/]\)|\1///\2|
s|^\([[:space:]]*\)//$|\1///|
s|\([;,{]\)[[:space:]]*//\([^/]\)|\1 ///<\2|

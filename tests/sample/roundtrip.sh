#!/usr/bin/env bash
# roundtrip.sh ZORBET-RSC RSC WORK: libraries that are unpacked and packed again are the same, and their maps.
set -euo pipefail
rm -rf "$3"
mkdir -p "$3/map"
{
  "$1" extract "$2"/* -o "$3/unpacked"
  "$1" pack "$3/unpacked/resources.manifest" -o "$3/RSC"
  "$1" map "$3"/RSC/{harbour,light,tower,lamp,ending,diploma,sounds}.rsc --name ZORBET-SAMPLE -o "$3/map"
} >"$3/said"
[ ! -s "$3/said" ]
diff -r "$2" "$3/RSC"
cmp "$2/resource.map" "$3/map/resource.map"
! grep -E 'file ASEQ|file RRGB|layout' "$3/unpacked/resources.manifest" # something of ours not unpacked

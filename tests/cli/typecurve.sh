#!/bin/sh
# zorvekan-cli typecurve: the result lines of a match, exactly as the type-curve screen
# prints them, at match points worked out by hand from each example's true reservoir
# (so they give its k, C, skin, xf, omega and lambda back), and its command-line errors.
cli=$1
src=$2
fail() { echo "FAIL: $*"; exit 1; }
ex=$src/examples

# Two rates, k 60 md, C 0.005 bbl/psi, skin 4: at 10 h tD/CD = 0.000295 k h t/(mu C) = 1770,
# and pD 1 is dp = 141.2 B mu/(k h) = 0.05648 psi per STB/day of rate change.
out=$("$cli" typecurve "$ex/two-rate-drawdown.zvt" --model single --curve 8 \
      --match 1770,1@10,0.05648) || fail "single exited $?"
[ "$out" = "CDe2s = 1.0E06
Permeability = 60. md.
Skin Factor = 4.01
Wellbore Storage = .005 bbl/psi." ] || fail "single porosity lines:
$out"

# Fracture, k 5 md, xf 100 ft: tDxf 1 at 5.688 h, pD 1 at 122.37 psi.
out=$("$cli" typecurve "$ex/fractured-drawdown.zvt" --model fracture --curve 7 \
      --match 1,1@5.688,122.37) || fail "fracture exited $?"
[ "$out" = "xe/xf = 10.
Permeability = 5. md.
Fracture Half Length = 100. ft." ] || fail "fracture lines:
$out"

# Dual porosity, k 100 md, C 0.004 bbl/psi, skin -2.3: tD/CD 368.75 at 1 h, pD 1 at 33.888
# psi; CDe2s of the fissures 100 (curve 5); the transition curves P1 1E-3 (14) and P2 1E-4
# (19) give omega 0.1 and lambda 0.9E-4 / CD = 9.1E-8.
out=$("$cli" typecurve "$ex/dual-porosity-buildup.zvt" --model dual --curve 5 \
      --match 368.75,1@1,33.888 --p1 14 --p2 19) || fail "dual exited $?"
[ "$out" = "CDe2s(frac) = 1.0E02
Permeability = 100. md.
Omega = 1.0E-01
Lambda = 9.1E-08
CDe2sfm = 1.0E01
Skin Factor = -2.3
Le-2s = 9.0E-06
Wellbore Storage = .004 bbl/psi." ] || fail "dual porosity lines:
$out"

for args in "--model triple --curve 1 --match 1,1@1,1" "--model single --curve 1.5 --match 1,1@1,1" \
            "--model single --curve 1 --match 1,1:1,1" "--model single --curve 1 --match 1,1@1,1 --p1 14"; do
    "$cli" typecurve "$ex/oil-buildup.zvt" $args >/dev/null 2>&1
    [ $? -eq 2 ] || fail "usage error expected for: $args"
done
for args in "--model single --curve 17 --match 1,1@1,1" \
            "--model dual --curve 7 --match 1,1@1,1 --p1 19 --p2 14"; do
    "$cli" typecurve "$ex/oil-buildup.zvt" $args >/dev/null 2>&1
    [ $? -eq 1 ] || fail "a curve outside its family or group must fail with 1: $args"
done
"$cli" typecurve /nonexistent.zvt --model single --curve 1 --match 1,1@1,1 >/dev/null 2>&1
[ $? -eq 1 ] || fail "a missing file must fail with 1"
echo "typecurve command: ok"

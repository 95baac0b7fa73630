#!/bin/sh
# zorvekan-cli regress: a model fitted to the whole of each example gives back the example's
# true reservoir (k 100 md, skin 3, C 0.01 bbl/psi for the oil buildup; k 100 md, skin -2.3,
# C 0.004 bbl/psi, omega 0.1, lambda 9.06E-8 for the dual-porosity buildup), with the lines
# the type-curve screen prints, and its command-line errors.
cli=$1
src=$2
fail() { echo "FAIL: $*"; exit 1; }
ex=$src/examples

# The number on a result line: "Caption = value unit. (± half)".
value() { echo "$out" | sed -n "s/^$1 = \([-0-9.E]*\).*/\1/p"; }
near() { awk -v a="$1" -v b="$2" -v tol="$3" 'BEGIN { d = a - b; if (d < 0) d = -d; exit !(d <= tol) }'; }

out=$("$cli" regress "$ex/oil-buildup.zvt" --model radial) || fail "radial exited $?"
captions=$(echo "$out" | sed 's/ =.*/ =/')
[ "$captions" = "Regression: Radial Homogeneous
Permeability =
Skin Factor =
Wellbore Storage =
p* =
RMS Misfit =
Points Used =" ] || fail "radial lines:
$out"
near "$(value Permeability)" 100 0.5 || fail "k: $out"
near "$(value 'Skin Factor')" 3 0.05 || fail "skin: $out"
near "$(value 'Wellbore Storage')" 0.01 0.0002 || fail "C: $out"
echo "$out" | grep -q '^Permeability = [0-9.]* md\. (± [0-9.]*)$' || fail "k interval: $out"
echo "$out" | grep -q '^Points Used = 100$' || fail "points: $out"

out=$("$cli" regress "$ex/dual-porosity-buildup.zvt" --model dual-pss) || fail "dual exited $?"
near "$(value Permeability)" 100 1 || fail "dual k: $out"
near "$(value 'Skin Factor')" -2.3 0.05 || fail "dual skin: $out"
near "$(value Omega)" 0.1 0.005 || fail "omega: $out"
near "$(value Lambda)" 9.06E-8 4.5E-9 || fail "lambda: $out"

# Two rates, a window of 1 to 40 h (36 of the test points) and the initial pressure held at
# the file's 3500 psia.
out=$("$cli" regress "$ex/two-rate-drawdown.zvt" --model radial --window 1:40 --fix pi=3500 \
      --start k=40,s=2) || fail "window exited $?"
echo "$out" | grep -q '^Initial Pressure = 3500.00 psia. (fixed)$' || fail "fixed pi: $out"
near "$(value Permeability)" 60 0.3 || fail "two-rate k: $out"
echo "$out" | grep -q '^Points Used = 36$' || fail "points in the window: $out"

for args in "--model triple" "--model radial --start xf=100" "--model radial --start k" \
            "--model radial --window 5:1" "--model radial --fix q=1" "--window 1:2"; do
    "$cli" regress "$ex/oil-buildup.zvt" $args >/dev/null 2>&1
    [ $? -eq 2 ] || fail "usage error expected for: $args"
done
"$cli" regress "$ex/oil-buildup.zvt" --model radial --window 1000:2000 >/dev/null 2>&1
[ $? -eq 1 ] || fail "a window without points must fail with 1"
"$cli" regress /nonexistent.zvt --model radial >/dev/null 2>&1
[ $? -eq 1 ] || fail "a missing file must fail with 1"
echo "regress command: ok"

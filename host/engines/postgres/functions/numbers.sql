-- Exact arithmetic, rounding, and conversions between numbers and texts. Modes of rounding: 0 halves
-- to even, 1 halves away from zero, 2 down, 3 up, 4 towards zero.

CREATE OR REPLACE FUNCTION quor_half_even(numeric) RETURNS numeric IMMUTABLE STRICT PARALLEL SAFE
  RETURN CASE WHEN abs(mod($1, 1)) = 0.5 THEN round($1 / 2) * 2 ELSE round($1) END;

-- Money by money, rounded to the ten-thousandth.
CREATE OR REPLACE FUNCTION quor_multiply(numeric, numeric) RETURNS numeric
  IMMUTABLE STRICT PARALLEL SAFE
  RETURN CASE WHEN abs(mod($1 * $2 * 10000, 1)) = 0.5 THEN round($1 * $2 * 5000) * 0.0002
               ELSE round($1 * $2, 4) END;

-- Money by money, cut to the ten-thousandth.
CREATE OR REPLACE FUNCTION quor_ratio(numeric, numeric) RETURNS numeric
  IMMUTABLE STRICT PARALLEL SAFE
  RETURN div($1 * 10000, $2) * 0.0001;

-- Sum by count: halves to even, or cut.
CREATE OR REPLACE FUNCTION quor_mean(numeric, bigint) RETURNS numeric
  IMMUTABLE STRICT PARALLEL SAFE
  RETURN (div($1 * 10000, $2) + CASE
      WHEN 2 * abs(mod($1 * 10000, $2)) > $2
        OR (2 * abs(mod($1 * 10000, $2)) = $2 AND mod(div($1 * 10000, $2), 2) <> 0)
      THEN sign($1) ELSE 0 END) * 0.0001;
CREATE OR REPLACE FUNCTION quor_mean_cut(numeric, bigint) RETURNS numeric
  IMMUTABLE STRICT PARALLEL SAFE
  RETURN div($1 * 10000, $2) * 0.0001;

CREATE OR REPLACE FUNCTION quor_round_exact(numeric, bigint, bigint) RETURNS numeric
  LANGUAGE plpgsql IMMUTABLE STRICT PARALLEL SAFE
  SET search_path FROM CURRENT AS $$
DECLARE
  places int := greatest(least($2, 20), -40);
  cut numeric := trunc($1, places);
BEGIN
  CASE $3
    WHEN 0 THEN RETURN quor_half_even($1 * power(10::numeric, places)) * power(10::numeric, -places);
    WHEN 1 THEN RETURN round($1, places);
    WHEN 2 THEN RETURN CASE WHEN $1 < cut THEN cut - power(10::numeric, -places) ELSE cut END;
    WHEN 3 THEN RETURN CASE WHEN $1 > cut THEN cut + power(10::numeric, -places) ELSE cut END;
    ELSE RETURN cut;
  END CASE;
END $$;

-- Money has four places, and whole numbers none, whatever more are asked for.
CREATE OR REPLACE FUNCTION quor_round_money(numeric, bigint, bigint) RETURNS numeric
  IMMUTABLE STRICT PARALLEL SAFE
  RETURN CASE WHEN $2 >= 4 THEN $1 ELSE quor_round_exact($1, $2, $3) END;
CREATE OR REPLACE FUNCTION quor_round_whole(bigint, bigint, bigint) RETURNS bigint
  IMMUTABLE STRICT PARALLEL SAFE
  RETURN CASE WHEN $2 >= 0 THEN $1 ELSE quor_round_exact($1::numeric, $2, $3)::bigint END;

-- On the shortest decimal digits: 2.675 is 267.5 hundredths, although the double is a little less.
CREATE OR REPLACE FUNCTION quor_round(float8, bigint, bigint) RETURNS float8
  LANGUAGE plpgsql IMMUTABLE STRICT PARALLEL SAFE
  SET search_path FROM CURRENT AS $$
BEGIN
  IF $1 = 0 OR $2 > 400 THEN RETURN $1; END IF;
  IF $2 < -400 THEN RETURN 0; END IF;
  IF $2 = 0 THEN
    RETURN CASE $3 WHEN 0 THEN round($1) WHEN 1 THEN sign($1) * floor(abs($1) + CASE
        WHEN abs($1) < 4503599627370496 AND abs($1) - floor(abs($1)) >= 0.5 THEN 0.5 ELSE 0 END)
      WHEN 2 THEN floor($1) WHEN 3 THEN ceil($1) ELSE trunc($1) END;
  END IF;
  IF abs($1::text::numeric * power(10::numeric, $2)) >= 4503599627370496 THEN RETURN $1; END IF;
  RETURN quor_round_far($1::text::numeric, $2, $3)::float8;
END $$;

CREATE OR REPLACE FUNCTION quor_round_far(numeric, bigint, bigint) RETURNS numeric
  LANGUAGE plpgsql IMMUTABLE STRICT PARALLEL SAFE
  SET search_path FROM CURRENT AS $$
DECLARE
  factor numeric := power(10::numeric, abs($2));
  shifted numeric := CASE WHEN $2 > 0 THEN $1 * factor ELSE $1 / factor END;
  rounded numeric := quor_round_exact(shifted, 0, $3);
BEGIN
  RETURN CASE WHEN $2 > 0 THEN trim_scale(rounded) * ('1e-' || $2)::numeric ELSE rounded * factor END;
END $$;

CREATE OR REPLACE FUNCTION quor_whole(numeric, numeric, numeric) RETURNS bigint
  LANGUAGE plpgsql IMMUTABLE STRICT PARALLEL SAFE
  SET search_path FROM CURRENT AS $$
BEGIN
  IF $1 < $2 OR $1 > $3 THEN PERFORM quor_overflow(); END IF;
  RETURN $1::bigint;
END $$;

-- (number or text, 1 to cut or 0 to round halves to even) as a whole number of 32 or 16 bits.
CREATE OR REPLACE FUNCTION quor_cut(numeric, bigint) RETURNS numeric IMMUTABLE STRICT PARALLEL SAFE
  RETURN CASE WHEN $2 = 1 THEN trunc($1) ELSE quor_half_even($1) END;
CREATE OR REPLACE FUNCTION quor_cut(float8, bigint) RETURNS numeric
  LANGUAGE plpgsql IMMUTABLE STRICT PARALLEL SAFE
  SET search_path FROM CURRENT AS $$
BEGIN
  IF abs($1) > 1e15 THEN PERFORM quor_overflow(); END IF;
  RETURN (CASE WHEN $2 = 1 THEN trunc($1) ELSE round($1) END)::bigint;
END $$;
CREATE OR REPLACE FUNCTION quor_cut(bpchar, bigint) RETURNS numeric
  LANGUAGE plpgsql IMMUTABLE STRICT PARALLEL SAFE
  SET search_path FROM CURRENT AS $$
DECLARE
  number float8 := quor_number($1);
BEGIN
  IF $2 = 1 AND number <> trunc(number) THEN
    PERFORM quor_fail(format('''%s'' is not a whole number', quor_raw($1)));
  END IF;
  RETURN quor_cut(number, $2);
END $$;

CREATE OR REPLACE FUNCTION quor_long(numeric, bigint) RETURNS bigint IMMUTABLE STRICT PARALLEL SAFE
  RETURN quor_whole(quor_cut($1, $2), -2147483648, 2147483647);
CREATE OR REPLACE FUNCTION quor_long(float8, bigint) RETURNS bigint IMMUTABLE STRICT PARALLEL SAFE
  RETURN quor_whole(quor_cut($1, $2), -2147483648, 2147483647);
CREATE OR REPLACE FUNCTION quor_long(bpchar, bigint) RETURNS bigint IMMUTABLE STRICT PARALLEL SAFE
  RETURN quor_whole(quor_cut($1, $2), -2147483648, 2147483647);
CREATE OR REPLACE FUNCTION quor_integer(numeric, bigint) RETURNS bigint
  IMMUTABLE STRICT PARALLEL SAFE
  RETURN quor_whole(quor_cut($1, $2), -32768, 32767);
CREATE OR REPLACE FUNCTION quor_integer(float8, bigint) RETURNS bigint
  IMMUTABLE STRICT PARALLEL SAFE
  RETURN quor_whole(quor_cut($1, $2), -32768, 32767);
CREATE OR REPLACE FUNCTION quor_integer(bpchar, bigint) RETURNS bigint
  IMMUTABLE STRICT PARALLEL SAFE
  RETURN quor_whole(quor_cut($1, $2), -32768, 32767);

CREATE OR REPLACE FUNCTION quor_is_numeric(bpchar) RETURNS bigint IMMUTABLE STRICT PARALLEL SAFE
  RETURN CASE WHEN quor_raw($1) COLLATE "C" ~
       '^[ \t\r\n\v\f]*[+-]?([0-9]+\.?[0-9]*|\.[0-9]+)([eE][+-]?[0-9]+)?[ \t\r\n\v\f]*$'
     THEN 1 ELSE 0 END::bigint;

CREATE OR REPLACE FUNCTION quor_number(bpchar) RETURNS float8
  LANGUAGE plpgsql IMMUTABLE STRICT PARALLEL SAFE
  SET search_path FROM CURRENT AS $$
BEGIN
  IF quor_is_numeric($1) = 0 THEN
    PERFORM quor_fail(format('''%s'' is not a number', quor_raw($1)));
  END IF;
  RETURN quor_raw($1)::float8;
END $$;

-- Rounded on the exact value of the double, halves to even.
CREATE OR REPLACE FUNCTION quor_money(float8) RETURNS numeric
  LANGUAGE plpgsql IMMUTABLE STRICT PARALLEL SAFE
  SET search_path FROM CURRENT AS $$
DECLARE
  places int := 0;
  mantissa float8 := abs($1);
  whole numeric;
  parts numeric;
BEGIN
  IF mantissa < 1e-5 THEN RETURN 0; END IF;
  IF NOT mantissa < 1e15 THEN PERFORM quor_overflow(); END IF;
  WHILE mantissa <> floor(mantissa) LOOP
    mantissa := mantissa * 2;
    places := places + 1;
  END LOOP;
  -- The double is mantissa / 2 ^ places, and 2 ^ places * 5 ^ places is 10 ^ places.
  whole := mantissa::bigint::numeric * 10000;
  parts := power(2::numeric, places);
  RETURN sign($1)::numeric * (div(whole, parts) + CASE
      WHEN 2 * mod(whole, parts) > parts
        OR (2 * mod(whole, parts) = parts AND mod(div(whole, parts), 2) <> 0)
      THEN 1 ELSE 0 END) * 0.0001;
END $$;

CREATE OR REPLACE FUNCTION quor_money(bpchar) RETURNS numeric
  LANGUAGE plpgsql IMMUTABLE STRICT PARALLEL SAFE
  SET search_path FROM CURRENT AS $$
DECLARE
  amount numeric;
BEGIN
  IF quor_is_numeric($1) = 0 OR quor_raw($1) COLLATE "C" ~ '[eE]' THEN
    PERFORM quor_fail(format('''%s'' is not a number', quor_raw($1)));
  END IF;
  amount := quor_half_even(quor_raw($1)::numeric * 10000) * 0.0001;
  IF abs(amount) > 922337203685477.5807 THEN PERFORM quor_overflow(); END IF;
  RETURN amount;
END $$;

CREATE OR REPLACE FUNCTION quor_money_text(numeric) RETURNS bpchar IMMUTABLE STRICT PARALLEL SAFE
  RETURN trim_scale($1)::text::bpchar;

-- Numbers of ordinary size are written out.
CREATE OR REPLACE FUNCTION quor_number_text(float8) RETURNS bpchar
  IMMUTABLE STRICT PARALLEL SAFE
  RETURN (CASE WHEN $1 = 0 THEN '0'
               WHEN abs($1) >= 1e-5 AND abs($1) < 1e15 THEN trim_scale($1::text::numeric)::text
               ELSE $1::text END)::bpchar;
